#include "dates/calendar_date.h"

#include "dates/zone_rules.h"

#include <algorithm>
#include <cmath>

namespace plenzo {

namespace {

constexpr int dateOnlyHour = 12;

Instant nearestReadable(Instant instant) {
    const double seconds = instant.secondsSinceReferenceDate();
    return std::isnan(seconds) ? Instant()
                               : Instant(std::clamp(seconds, -Instant::furthestReadableSeconds,
                                                    Instant::furthestReadableSeconds));
}

/// The fields with the components' defined ones in their place.
DateComponents applied(DateComponents fields, const DateComponents& components) {
    const auto apply = [](std::int64_t& field, std::int64_t component) {
        field = component != undefinedComponent ? component : field;
    };
    apply(fields.year, components.year);
    apply(fields.month, components.month);
    apply(fields.day, components.day);
    apply(fields.hour, components.hour);
    apply(fields.minute, components.minute);
    apply(fields.second, components.second);
    return fields;
}

DateComponents fieldsIn(const TimeZone& timeZone, Instant instant) {
    return DateComponents::fromFields(fieldsOf(civilTime(instant, timeZone)));
}

/// The wall-clock time in another zone. The years of a readable instant are never out of range.
CalendarDate sameFields(Instant instant, const TimeZone& from, const TimeZone& to) {
    return CalendarDate(instantOf(civilTime(instant, from), to).value_or(instant), to);
}

} // namespace

CalendarDate::CalendarDate(Instant instant, const TimeZone& timeZone)
    : m_instant(nearestReadable(instant)), m_timeZone(timeZone) {}

std::optional<CalendarDate> CalendarDate::dateWithYear(std::int64_t year, std::int64_t month,
                                                       std::int64_t day, std::int64_t hour,
                                                       std::int64_t minute, std::int64_t second,
                                                       bool dateOnly, const TimeZone& timeZone) {
    return dateWithComponents({.year = year,
                               .month = month,
                               .day = day,
                               .hour = hour,
                               .minute = minute,
                               .second = second},
                              dateOnly, timeZone);
}

std::optional<CalendarDate> CalendarDate::dateWithComponents(const DateComponents& components,
                                                             bool dateOnly,
                                                             const TimeZone& timeZone) {
    if (!dateOnly) {
        return calendarDateWithDate(Calendar(timeZone).dateFromComponents(components), timeZone);
    }
    DateComponents noon = components;
    noon.hour = dateOnlyHour;
    noon.minute = 0;
    noon.second = 0;
    return dateWithComponents(noon, false, TimeZone::universal());
}

std::optional<CalendarDate> CalendarDate::dateWithTimeIntervalSince1970(double seconds,
                                                                        bool dateOnly,
                                                                        const TimeZone& timeZone) {
    const auto date = calendarDateWithDate(Instant::since1970(seconds), timeZone);
    return date && dateOnly
               ? dateWithComponents(fieldsIn(timeZone, date->m_instant), true, timeZone)
               : date;
}

std::optional<CalendarDate> CalendarDate::calendarDateWithDate(std::optional<Instant> date,
                                                               const TimeZone& timeZone) {
    return date && date->isReadable() ? std::optional(CalendarDate(*date, timeZone)) : std::nullopt;
}

DateFields CalendarDate::fields() const {
    return fieldsOf(civilTime(m_instant, m_timeZone));
}

DateComponents CalendarDate::components() const {
    DateComponents components = fieldsIn(m_timeZone, m_instant);
    const bool isNoon =
        components.hour == dateOnlyHour && components.minute == 0 && components.second == 0;
    if (isNoon && m_timeZone.isUniversal()) {
        components.hour = undefinedComponent;
        components.minute = undefinedComponent;
        components.second = undefinedComponent;
    }
    return components;
}

std::int64_t CalendarDate::dayOfCommonEra() const {
    return cctz::civil_day(civilTime(m_instant, m_timeZone)) - cctz::civil_day(1, 1, 1) + 1;
}

void CalendarDate::adjustComponentsForTimeZone(const TimeZone& timeZone, bool isDateOnly,
                                               bool isFloating) {
    if (!isDateOnly && !isFloating) {
        m_timeZone = timeZone;
    }
}

std::optional<CalendarDate>
CalendarDate::calendarDateByApplyingComps(const DateComponents& components,
                                          const Calendar& calendar, bool floating) const {
    const Calendar used = floating ? this->calendar() : calendar;
    const DateComponents fields = fieldsIn(used.timeZone(), m_instant);
    return calendarDateWithDate(used.dateFromComponents(applied(fields, components)), m_timeZone);
}

std::optional<CalendarDate>
CalendarDate::calendarDateByApplyingComps(const DateComponents& components,
                                          const TimeZone& timeZone) const {
    const DateComponents fields = fieldsIn(m_timeZone, m_instant);
    return dateWithComponents(applied(fields, components), false, timeZone);
}

std::optional<CalendarDate>
CalendarDate::dateByAddingComponents(const DateComponents& components) const {
    return calendarDateWithDate(calendar().dateByAddingComponents(components, m_instant),
                                m_timeZone);
}

CalendarDate CalendarDate::localTimeFromFloatingTime(const TimeZone& timeZone) const {
    return sameFields(m_instant, m_timeZone, timeZone);
}

CalendarDate CalendarDate::floatingTimeFromLocalTime() const {
    return sameFields(m_instant, m_timeZone, TimeZone::universal());
}

std::optional<CalendarDate> CalendarDate::calendarDateByAddingTimeInterval(double seconds) const {
    return calendarDateWithDate(m_instant + std::trunc(seconds), m_timeZone);
}

namespace {

IntervalAddition& intervalAddition() {
    static IntervalAddition addition = IntervalAddition::Exact;
    return addition;
}

} // namespace

std::optional<CalendarDate> CalendarDate::dateByAddingTimeInterval(double seconds) const {
    return intervalAddition() == IntervalAddition::WholeSeconds
               ? calendarDateByAddingTimeInterval(seconds)
               : calendarDateWithDate(m_instant + seconds, m_timeZone);
}

IntervalAddition CalendarDate::fixDateByAddingTimeInterval(IntervalAddition addition) {
    const IntervalAddition before = intervalAddition();
    intervalAddition() = addition;
    return before;
}

std::optional<CalendarDate> normalizedDateWithAllDay(Instant date, bool allDay) {
    return CalendarDate::dateWithTimeIntervalSince1970(date.secondsSince1970(), allDay);
}

} // namespace plenzo
