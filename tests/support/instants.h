#pragma once

#include "dates/calendar_date.h"

#include <stdexcept>
#include <string>

namespace plenzo {

/// A zone that the pinned zone data must have.
inline TimeZone zone(const std::string& name) {
    const auto zone = TimeZone::named(name);
    if (!zone) {
        throw std::invalid_argument("no zone data for " + name);
    }
    return *zone;
}

/// The instant at which the clock in the zone shows these fields.
inline Instant instantIn(const TimeZone& timeZone, int year, int month, int day, int hour = 0,
                         int minute = 0, int second = 0) {
    return CalendarDate::dateWithYear(year, month, day, hour, minute, second, false, timeZone)
        .value()
        .instant();
}

inline Instant utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return instantIn(TimeZone::universal(), year, month, day, hour, minute, second);
}

} // namespace plenzo
