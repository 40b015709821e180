#include "dates/week_of_year.h"

#include "dates/zone_rules.h"

namespace plenzo {

namespace {

constexpr int daysPerWeek = 7;

cctz::civil_day startOfWeek(const cctz::civil_day& day, int firstWeekday) {
    return day - (weekdayOf(day) - firstWeekday + daysPerWeek) % daysPerWeek;
}

} // namespace

WeekOfYear weekOfYear(const cctz::civil_day& day, int firstWeekday, int minimumDaysInFirstWeek) {
    // The first week is the one in which the last day of the fewest that it must have falls: the
    // week before has too few.
    const auto firstWeek = [&](std::int64_t year) {
        return startOfWeek(cctz::civil_day(year, 1, minimumDaysInFirstWeek), firstWeekday);
    };
    const cctz::civil_day week = startOfWeek(day, firstWeekday);
    std::int64_t year = (week + (daysPerWeek - 1)).year();
    if (week < firstWeek(year)) {
        year -= 1;
    }
    return {static_cast<int>((week - firstWeek(year)) / daysPerWeek) + 1, year};
}

int isoWeekNumber(const cctz::civil_day& day) {
    constexpr int daysFromMondayToThursday = 3;
    const int daysFromMonday = (weekdayOf(day) + 5) % daysPerWeek;
    const cctz::civil_day thursday = day + (daysFromMondayToThursday - daysFromMonday);
    return static_cast<int>((thursday - cctz::civil_day(thursday.year(), 1, 1)) / daysPerWeek) + 1;
}

} // namespace plenzo
