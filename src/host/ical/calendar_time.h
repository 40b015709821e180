#pragma once

#include "host/ical/calendar_zone.h"

#include <cstdint>

namespace plenzo {

/// Whether a time of a calendar is a day, a wall clock without zone, or a wall clock in a zone.
enum class TimeForm : std::uint8_t { Date, Floating, Zoned };

/// A DATE or DATE-TIME value (RFC 5545, 3.3.4 and 3.3.5). A date has the time 00:00:00.
struct CalendarTime {
    TimeForm form = TimeForm::Date;
    cctz::civil_second local;
    CalendarZone zone;
};

/// A DURATION value (RFC 5545, 3.3.6), signed: days move the wall clock, seconds are exact.
struct CalendarDuration {
    std::int64_t days = 0;
    std::int64_t seconds = 0;
};

/// The zone that a time is read in: its own, or `systemZone` for dates and floating times.
const CalendarZone& zoneOf(const CalendarTime& time, const CalendarZone& systemZone);

SystemSeconds instantOf(const CalendarTime& time, const CalendarZone& systemZone);

/// The same form and zone at another wall clock.
CalendarTime movedTo(const CalendarTime& time, const cctz::civil_second& local);

/// The wall clock moved by whole days.
cctz::civil_second addDays(const cctz::civil_second& local, std::int64_t days);

/// `instant` moved by the duration's days on the wall clock of `zone`, then by its seconds.
SystemSeconds movedBy(SystemSeconds instant, const CalendarDuration& duration,
                      const CalendarZone& zone);

} // namespace plenzo
