#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace plenzo {

/// The value of a component that is not set.
inline constexpr std::int64_t undefinedComponent = std::numeric_limits<std::int64_t>::max();

/// The fields of one moment as a clock on the wall shows them, in the proleptic Gregorian calendar
/// with a year 0.
struct DateFields {
    std::int64_t year = 2001;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31
    int hour = 0;   ///< 0 to 23
    int minute = 0; ///< 0 to 59
    int second = 0; ///< 0 to 59

    friend bool operator==(const DateFields&, const DateFields&) = default;
};

/// Some fields of a date, or amounts of calendar units to add to one. Each may be undefined.
struct DateComponents {
    std::int64_t year = undefinedComponent;
    std::int64_t month = undefinedComponent;
    std::int64_t day = undefinedComponent;
    std::int64_t hour = undefinedComponent;
    std::int64_t minute = undefinedComponent;
    std::int64_t second = undefinedComponent;
    std::int64_t weekday = undefinedComponent; ///< 1 Sunday to 7 Saturday
    std::int64_t weekOfYear = undefinedComponent;
    std::int64_t yearForWeekOfYear = undefinedComponent;

    [[nodiscard]] static DateComponents fromFields(const DateFields& fields);

    [[nodiscard]] std::int64_t weekNumber() const { return weekOfYear; }

    /// The defined fields only, such as "12-3/14/2024 09:05:00": the week of the year, month, day,
    /// year, hour, minute, second.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

/// A set of calendar units, one bit each.
enum CalendarUnit : unsigned {
    yearUnit = 4,
    monthUnit = 8,
    dayUnit = 16,
    hourUnit = 32,
    minuteUnit = 64,
    secondUnit = 128,
    weekdayUnit = 512,
    weekOfYearUnit = 8192,
    yearForWeekOfYearUnit = 16384,
    weekNumberUnit = weekOfYearUnit | yearForWeekOfYearUnit,
};

} // namespace plenzo
