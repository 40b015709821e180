#pragma once

#include <cctz/civil_time.h>

#include <cstdint>

namespace plenzo {

/// A week by its number in the year that it is counted in, which near New Year may be another than
/// the day's own.
struct WeekOfYear {
    int week = 1;
    std::int64_t year = 2001;
};

/// The week of the day when weeks begin on that weekday (1 Sunday to 7 Saturday) and the first
/// week of a year is the earliest with at least so many of its days (1 to 7).
[[nodiscard]] WeekOfYear weekOfYear(const cctz::civil_day& day, int firstWeekday,
                                    int minimumDaysInFirstWeek);

/// The number of the day's week after ISO 8601: that of its Thursday, whose year counts.
[[nodiscard]] int isoWeekNumber(const cctz::civil_day& day);

} // namespace plenzo
