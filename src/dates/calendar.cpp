#include "dates/calendar.h"

#include "dates/week_of_year.h"
#include "dates/zone_rules.h"

#include <algorithm>
#include <cmath>

namespace plenzo {

namespace {

constexpr int daysPerWeek = 7;

std::optional<Instant> readable(std::optional<Instant> date) {
    return date && date->isReadable() ? date : std::nullopt;
}

/// What the components add, with 0 for the undefined; nothing when one is absurdly large.
std::optional<DateComponents> amounts(DateComponents components) {
    for (std::int64_t* amount :
         {&components.year, &components.month, &components.weekOfYear, &components.day,
          &components.hour, &components.minute, &components.second}) {
        if (*amount == undefinedComponent) {
            *amount = 0;
        }
        if (!isSensibleComponent(*amount)) {
            return std::nullopt;
        }
    }
    return components;
}

cctz::civil_second addMonths(const cctz::civil_second& time, std::int64_t months) {
    const cctz::civil_month month = cctz::civil_month(time) + months;
    const cctz::civil_day lastDay = cctz::civil_day(month + 1) - 1;
    return cctz::civil_second(month.year(), month.month(), std::min(time.day(), lastDay.day()),
                              time.hour(), time.minute(), time.second());
}

cctz::civil_second addDays(const cctz::civil_second& time, std::int64_t days) {
    const cctz::civil_day day = cctz::civil_day(time) + days;
    return cctz::civil_second(day.year(), day.month(), day.day(), time.hour(), time.minute(),
                              time.second());
}

/// The largest number of units, in the direction of `to`, that lead from `from` not beyond it.
/// `added` gives the date so many units after `from`; `estimate` is near the result.
template <typename Added>
std::int64_t wholeUnits(Instant from, Instant to, std::int64_t estimate, const Added& added) {
    const std::int64_t step = from <= to ? 1 : -1;
    const auto isBeyond = [&](std::int64_t units) {
        const std::optional<Instant> date = added(units);
        return !date || (step > 0 ? *date > to : *date < to);
    };
    std::int64_t units = estimate;
    while (units != 0 && isBeyond(units)) {
        units -= step;
    }
    while (!isBeyond(units + step)) {
        units += step;
    }
    return units;
}

} // namespace

void Calendar::setFirstWeekday(int weekday) {
    if (weekday >= 1 && weekday <= daysPerWeek) {
        m_firstWeekday = weekday;
    }
}

void Calendar::setMinimumDaysInFirstWeek(int days) {
    if (days >= 1 && days <= daysPerWeek) {
        m_minimumDaysInFirstWeek = days;
    }
}

std::optional<Instant> Calendar::dateFromComponents(const DateComponents& components) const {
    const auto time = normalizedTime(components);
    return time ? readable(instantOf(*time, m_timeZone)) : std::nullopt;
}

std::optional<Instant> Calendar::dateByAddingComponents(const DateComponents& components,
                                                        Instant date) const {
    const auto added = amounts(components);
    if (!added || !date.isReadable()) {
        return std::nullopt;
    }
    const std::int64_t months = added->year * 12 + added->month;
    const std::int64_t days = added->weekOfYear * daysPerWeek + added->day;
    const std::int64_t seconds = (added->hour * 60 + added->minute) * 60 + added->second;
    std::optional<Instant> moved = date;
    if (months != 0 || days != 0) {
        const double fraction =
            date.secondsSinceReferenceDate() - std::floor(date.secondsSinceReferenceDate());
        moved =
            instantOf(addDays(addMonths(civilTime(date, m_timeZone), months), days), m_timeZone);
        moved = moved ? std::optional(*moved + fraction) : std::nullopt;
    }
    return moved ? readable(*moved + static_cast<double>(seconds)) : std::nullopt;
}

DateComponents Calendar::componentsIncludingWeek(unsigned units, Instant date) const {
    DateComponents components;
    if (!date.isReadable()) {
        return components;
    }
    const cctz::civil_second time = civilTime(date, m_timeZone);
    const cctz::civil_day day(time);
    const auto set = [units](CalendarUnit unit, std::int64_t& component, std::int64_t value) {
        component = (units & unit) != 0 ? value : undefinedComponent;
    };
    set(yearUnit, components.year, time.year());
    set(monthUnit, components.month, time.month());
    set(dayUnit, components.day, time.day());
    set(hourUnit, components.hour, time.hour());
    set(minuteUnit, components.minute, time.minute());
    set(secondUnit, components.second, time.second());
    set(weekdayUnit, components.weekday, weekdayOf(day));
    const WeekOfYear week = weekOfYear(day, m_firstWeekday, m_minimumDaysInFirstWeek);
    set(weekOfYearUnit, components.weekOfYear, week.week);
    set(yearForWeekOfYearUnit, components.yearForWeekOfYear, week.year);
    return components;
}

std::int64_t Calendar::daysFromDate(Instant from, Instant to) const {
    if (!from.isReadable() || !to.isReadable()) {
        return 0;
    }
    const std::int64_t estimate =
        cctz::civil_day(civilTime(to, m_timeZone)) - cctz::civil_day(civilTime(from, m_timeZone));
    const std::int64_t days = wholeUnits(from, to, estimate, [&](std::int64_t units) {
        return dateByAddingComponents({.day = units}, from);
    });
    return from > to ? days - 1 : days;
}

std::int64_t Calendar::monthsFromDate(Instant from, Instant to) const {
    if (!from.isReadable() || !to.isReadable()) {
        return 0;
    }
    const std::int64_t estimate = cctz::civil_month(civilTime(to, m_timeZone)) -
                                  cctz::civil_month(civilTime(from, m_timeZone));
    const std::int64_t months = wholeUnits(from, to, estimate, [&](std::int64_t units) {
        return dateByAddingComponents({.month = units}, from);
    });
    return from > to ? months - 1 : months;
}

int Calendar::isoWeekNumberForDate(Instant date, bool useFollowingMonday) const {
    constexpr std::int64_t twoHoursSeconds = 7200;
    const std::int64_t daysToMonday = (9 - m_firstWeekday) % daysPerWeek;
    const auto moved =
        useFollowingMonday
            ? dateByAddingComponents({.day = daysToMonday, .second = twoHoursSeconds}, date)
            : readable(date);
    return moved ? isoWeekNumber(cctz::civil_day(civilTime(*moved, m_timeZone))) : 0;
}

} // namespace plenzo
