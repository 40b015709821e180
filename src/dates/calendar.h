#pragma once

#include "dates/date_components.h"
#include "dates/instant.h"
#include "dates/time_zone.h"

#include <cstdint>
#include <optional>

namespace plenzo {

/// The proleptic Gregorian calendar in one time zone: reads fields, builds dates from fields and
/// does arithmetic in calendar units.
///
/// A wall-clock time that the zone's clock skips moves forward by the length of the gap: with the
/// usual hour 02:30 becomes 03:30, with Lord Howe's half hour 02:15 becomes 02:45, and 10:00 on
/// the day that Apia left out becomes 10:00 of the next. Of a time that comes twice the first is
/// taken.
class Calendar {
public:
    /// Weeks begin on Sunday, and every week with a day in the new year counts as its first.
    explicit Calendar(const TimeZone& timeZone) : m_timeZone(timeZone) {}

    [[nodiscard]] const TimeZone& timeZone() const { return m_timeZone; }

    /// 1 Sunday to 7 Saturday; setting another number changes nothing.
    [[nodiscard]] int firstWeekday() const { return m_firstWeekday; }
    void setFirstWeekday(int weekday);

    /// How many days of the new year its first week has at least, 1 to 7; setting another number
    /// changes nothing. ISO 8601 has 4, with weeks that begin on Monday.
    [[nodiscard]] int minimumDaysInFirstWeek() const { return m_minimumDaysInFirstWeek; }
    void setMinimumDaysInFirstWeek(int days);

    /// The date of year, month, day, hour, minute and second; too large or too small fields are
    /// carried over (month 13 is January of the next year). Nothing when one of the six is
    /// undefined or the date is not readable.
    [[nodiscard]] std::optional<Instant> dateFromComponents(const DateComponents& components) const;

    /// The date with years, months, weeks and days added on the wall clock, then hours, minutes
    /// and seconds in absolute time. A day that the resulting month does not have becomes its last
    /// one (31 January plus a month is 28 or 29 February). The fraction of a second stays.
    /// Undefined components add nothing. Nothing when the date or the result is not readable.
    [[nodiscard]] std::optional<Instant> dateByAddingComponents(const DateComponents& components,
                                                                Instant date) const;

    /// Of a bit set of CalendarUnit, the units' values on the date; all others are undefined, and
    /// all are on a date that is not readable. Fractions of a second are rounded down.
    [[nodiscard]] DateComponents componentsIncludingWeek(unsigned units, Instant date) const;

    /// How many whole days, each of the same wall-clock time, lie between the dates. Negative and
    /// less by 1 when the first is the later one: a backward span counts one day further (36 hours
    /// back is -2). 0 when a date is not readable.
    [[nodiscard]] std::int64_t daysFromDate(Instant from, Instant to) const;

    /// The same in months.
    [[nodiscard]] std::int64_t monthsFromDate(Instant from, Instant to) const;

    /// The number of the week after ISO 8601 (Monday to Sunday, the year's first is the one with
    /// its first Thursday). With `useFollowingMonday` the date is first moved forward by two hours
    /// and as many days as lie between the calendar's first weekday and the Monday after it, so a
    /// week that begins on a Sunday has the number of its Monday. 0 when the date is not readable.
    [[nodiscard]] int isoWeekNumberForDate(Instant date, bool useFollowingMonday) const;

private:
    TimeZone m_timeZone;
    int m_firstWeekday = 1;
    int m_minimumDaysInFirstWeek = 1;
};

} // namespace plenzo
