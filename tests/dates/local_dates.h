#pragma once

#include "dates/calendar_date.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>

namespace plenzo {

/// A zone of the pinned data; a test that asks for another one fails.
inline TimeZone zoneNamed(const std::string& name) {
    const auto zone = TimeZone::named(name);
    EXPECT_TRUE(zone.has_value()) << name << " is not in the zone data under TZDIR";
    return zone.value_or(TimeZone::universal());
}

/// Fields out of a text such as "2024-03-31 02:30:00".
inline DateComponents componentsOf(const std::string& local) {
    DateFields fields;
    int year = 0;
    EXPECT_EQ(6, std::sscanf(local.c_str(), "%d-%d-%d %d:%d:%d", &year, &fields.month, &fields.day,
                             &fields.hour, &fields.minute, &fields.second))
        << local;
    fields.year = year;
    return DateComponents::fromFields(fields);
}

/// The date with those fields in the zone.
inline CalendarDate localDate(const std::string& local, const TimeZone& zone) {
    const auto date = CalendarDate::dateWithComponents(componentsOf(local), false, zone);
    EXPECT_TRUE(date.has_value()) << local;
    return date.value_or(CalendarDate());
}
inline CalendarDate localDate(const std::string& local, const std::string& zone) {
    return localDate(local, zoneNamed(zone));
}

inline std::string textOf(const DateFields& fields) {
    char text[64] = {};
    std::snprintf(text, sizeof text, "%04lld-%02d-%02d %02d:%02d:%02d",
                  static_cast<long long>(fields.year), fields.month, fields.day, fields.hour,
                  fields.minute, fields.second);
    return text;
}
inline std::string textOf(const std::optional<CalendarDate>& date) {
    return date ? textOf(date->fields()) : "nothing";
}

inline void PrintTo(const CalendarDate& date, std::ostream* stream) {
    *stream << textOf(date) << ' ' << date.timeZone().name();
}
inline void PrintTo(const DateComponents& components, std::ostream* stream) {
    *stream << components.description();
}
inline void PrintTo(Instant instant, std::ostream* stream) {
    *stream << std::to_string(instant.secondsSinceReferenceDate());
}

} // namespace plenzo
