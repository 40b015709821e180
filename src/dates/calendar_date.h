#pragma once

#include "dates/calendar.h"
#include "dates/date_components.h"
#include "dates/instant.h"
#include "dates/time_zone.h"

#include <cstdint>
#include <optional>

namespace plenzo {

/// How CalendarDate::dateByAddingTimeInterval treats the fraction of a second of an interval.
enum class IntervalAddition { Exact, WholeSeconds };

/// An instant with the time zone in which its calendar fields are read. The instant is always
/// readable.
///
/// Two kinds are stored in Universal on purpose. A date-only date is noon of its day there; a
/// floating date has the wall-clock fields as if they were in UTC.
class CalendarDate {
public:
    /// The reference date in Universal.
    CalendarDate() = default;

    /// The instant, brought to the nearest readable one; NaN becomes the reference date. For dates
    /// that come from outside there is calendarDateWithDate.
    explicit CalendarDate(Instant instant, const TimeZone& timeZone = TimeZone::universal());

    /// Those fields in the zone, with too large or too small ones carried over (month 13 is January
    /// of the next year); skipped and repeated times as in Calendar. With `dateOnly` noon of the
    /// day in Universal; the other fields and the zone do not count. Nothing when a field is
    /// undefined or the date is not readable.
    [[nodiscard]] static std::optional<CalendarDate>
    dateWithYear(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
                 std::int64_t minute, std::int64_t second, bool dateOnly,
                 const TimeZone& timeZone = TimeZone::universal());

    /// The same from the components' year, month, day, hour, minute and second.
    [[nodiscard]] static std::optional<CalendarDate>
    dateWithComponents(const DateComponents& components, bool dateOnly,
                       const TimeZone& timeZone = TimeZone::universal());

    /// The date so many seconds after 1970 in the zone; with `dateOnly` the date-only date of the
    /// day that the zone's calendar then shows. Nothing when it is not readable.
    [[nodiscard]] static std::optional<CalendarDate>
    dateWithTimeIntervalSince1970(double seconds, bool dateOnly,
                                  const TimeZone& timeZone = TimeZone::universal());

    /// Nothing without a date and for one that is not readable.
    [[nodiscard]] static std::optional<CalendarDate>
    calendarDateWithDate(std::optional<Instant> date,
                         const TimeZone& timeZone = TimeZone::universal());

    [[nodiscard]] Instant instant() const { return m_instant; }
    [[nodiscard]] const TimeZone& timeZone() const { return m_timeZone; }
    void setTimeZone(const TimeZone& timeZone) { m_timeZone = timeZone; }

    /// Read in the date's own zone, fractions of a second rounded down.
    [[nodiscard]] DateFields fields() const;

    /// The six fields; those of a date-only date (12:00:00 in a universal zone) have no hour,
    /// minute and second.
    [[nodiscard]] DateComponents components() const;

    /// The number of the day in the date's own zone, where 1 January of the year 1 has 1.
    [[nodiscard]] std::int64_t dayOfCommonEra() const;

    /// A calendar in the date's own zone.
    [[nodiscard]] Calendar calendar() const { return Calendar(m_timeZone); }

    /// Sets the zone, unless the date is date-only or floating.
    void adjustComponentsForTimeZone(const TimeZone& timeZone, bool isDateOnly, bool isFloating);

    /// The date's fields as the calendar reads them, the defined ones of the components in their
    /// place, as the calendar makes a date of them, in the date's own zone. When `floating`, with
    /// the date's own calendar instead. Nothing when the result is not readable.
    [[nodiscard]] std::optional<CalendarDate>
    calendarDateByApplyingComps(const DateComponents& components, const Calendar& calendar,
                                bool floating) const;

    /// The date's own fields, the defined ones of the components in their place, in the given zone.
    [[nodiscard]] std::optional<CalendarDate>
    calendarDateByApplyingComps(const DateComponents& components, const TimeZone& timeZone) const;

    /// As Calendar::dateByAddingComponents, in the date's own zone.
    [[nodiscard]] std::optional<CalendarDate>
    dateByAddingComponents(const DateComponents& components) const;

    /// The same wall-clock fields in the zone, or in Universal; without a fraction of a second.
    [[nodiscard]] CalendarDate localTimeFromFloatingTime(const TimeZone& timeZone) const;
    [[nodiscard]] CalendarDate floatingTimeFromLocalTime() const;

    /// Moved in absolute time by the interval, whose fraction of a second is cut off. Nothing when
    /// the result is not readable.
    [[nodiscard]] std::optional<CalendarDate>
    calendarDateByAddingTimeInterval(double seconds) const;

    /// Moved by the exact interval, until fixDateByAddingTimeInterval() makes this the same as
    /// calendarDateByAddingTimeInterval().
    [[nodiscard]] std::optional<CalendarDate> dateByAddingTimeInterval(double seconds) const;

    /// For the whole program, to be called once when it starts. Returns how it was before.
    static IntervalAddition
    fixDateByAddingTimeInterval(IntervalAddition addition = IntervalAddition::WholeSeconds);

    /// Of one instant and one zone.
    friend bool operator==(const CalendarDate&, const CalendarDate&) = default;

private:
    Instant m_instant;
    TimeZone m_timeZone;
};

/// The date in Universal; with `allDay` the date-only date of its day there. Nothing when the date
/// is not readable.
[[nodiscard]] std::optional<CalendarDate> normalizedDateWithAllDay(Instant date, bool allDay);

} // namespace plenzo
