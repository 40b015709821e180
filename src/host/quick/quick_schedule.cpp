#include "host/quick/quick_schedule.h"

#include "host/quick/quick_rule.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr int noon = 12;
constexpr int daysOfWeek = 7;
constexpr int minuteSeconds = 60;
constexpr int hourSeconds = 3600;

bool isExactUnit(QuickUnit unit) {
    return unit == QuickUnit::Minute || unit == QuickUnit::Hour;
}

cctz::seconds exactLength(const QuickAmount& amount) {
    return cctz::seconds(amount.count *
                         (amount.unit == QuickUnit::Hour ? hourSeconds : minuteSeconds));
}

cctz::civil_second at(cctz::civil_day day, int hour, int minute) {
    return cctz::civil_second(day.year(), day.month(), day.day(), hour, minute);
}

/// "The last friday" of this month or the next, from that day on.
cctz::civil_day firstPositioned(cctz::civil_day from, const QuickRecurrence& recurrence) {
    const int weekday = recurrence.weekdays.front();
    cctz::civil_month month(from);
    while (true) {
        const cctz::civil_day next(month + 1);
        const cctz::civil_day day = recurrence.position < 0
                                        ? firstWeekdayFrom(next - daysOfWeek, weekday)
                                        : firstWeekdayFrom(cctz::civil_day(month), weekday) +
                                              cctz::diff_t(recurrence.position - 1) * daysOfWeek;
        if (day >= from) {
            return day;
        }
        ++month;
    }
}

class Scheduler {
public:
    Scheduler(const QuickParts& parts, const QuickEntryContext& context)
        : m_parts(parts), m_context(context),
          m_today(cctz::civil_day(context.zone.localOf(context.now))) {}

    QuickSchedule schedule() const {
        if (m_parts.kind == ItemKind::ToDo && !hasDate()) {
            return {};
        }
        QuickSchedule result = hasTime() ? timed() : allDay();
        if (m_parts.kind == ItemKind::ToDo) {
            makeDue(result);
        }
        return result;
    }

private:
    bool hasTime() const {
        return m_parts.times || m_parts.delay || (m_parts.day && m_parts.day->hour);
    }
    bool hasDate() const { return hasTime() || m_parts.day || m_parts.recurrence; }
    bool hasSpan() const {
        return m_parts.length || (m_parts.times && m_parts.times->to) ||
               (m_parts.day && m_parts.day->last > m_parts.day->first);
    }

    /// A to-do is due at the moment that is named, or by the end of the span.
    void makeDue(QuickSchedule& result) const {
        const bool isDate = result.start->form == TimeForm::Date;
        if (!hasSpan()) {
            result.end = result.start;
        } else if (isDate) { // due on its last day, not before the day after
            result.end->local = addDays(result.end->local, -1);
        }
        if (!hasSpan() && !m_parts.recurrence) {
            result.start.reset();
        }
    }

    CalendarTime date(cctz::civil_day day) const {
        return {TimeForm::Date, cctz::civil_second(day), {}};
    }

    /// At a wall clock that there is: one that is skipped moves behind the gap.
    CalendarTime moment(SystemSeconds instant) const {
        return {TimeForm::Zoned, m_context.zone.localOf(instant), m_context.zone};
    }

    QuickSchedule allDay() const {
        const cctz::civil_day first = firstDay(m_parts.day ? m_parts.day->first : m_today);
        const auto days = m_parts.day ? m_parts.day->last - m_parts.day->first : 0;
        cctz::civil_day end = first + days + 1;
        if (m_parts.length && !isExactUnit(m_parts.length->unit) && !m_parts.recurrence) {
            end = movedDay(first, m_parts.length->count, m_parts.length->unit).value_or(end);
        }
        const CalendarTime start = date(first);
        return {start, date(end), ruleOf(start)};
    }

    QuickSchedule timed() const {
        const SystemSeconds begin = m_parts.delay ? delayed() : firstMoment();
        const CalendarTime start = moment(begin);
        const SystemSeconds end = endAfter(begin);
        return {start, moment(std::max(end, begin)), ruleOf(start)};
    }

    std::string ruleOf(const CalendarTime& start) const {
        return m_parts.recurrence ? quickRule(*m_parts.recurrence, m_parts.length, start)
                                  : std::string();
    }

    /// On the next whole minute.
    SystemSeconds delayed() const {
        const std::int64_t unixSeconds =
            unixSecondsOf(m_context.now + exactLength(*m_parts.delay)) + minuteSeconds - 1;
        return instantFromUnixSeconds(unixSeconds - unixSeconds % minuteSeconds);
    }

    /// The first day from `day` on that the recurrence allows.
    cctz::civil_day firstDay(cctz::civil_day day) const {
        if (!m_parts.recurrence || m_parts.recurrence->weekdays.empty()) {
            return day;
        }
        if (m_parts.recurrence->position != 0) {
            return firstPositioned(day, *m_parts.recurrence);
        }
        cctz::civil_day first = day + daysOfWeek;
        for (const int weekday : m_parts.recurrence->weekdays) {
            first = std::min(first, firstWeekdayFrom(day, weekday));
        }
        return first;
    }

    std::optional<HalfOfDay> half() const {
        if (m_parts.times->half) {
            return m_parts.times->half;
        }
        if (m_parts.day && m_parts.day->hour) {
            return *m_parts.day->hour < noon ? HalfOfDay::Morning : HalfOfDay::Evening;
        }
        return m_parts.hint;
    }

    /// The hour that is meant by the one that is written.
    int startHour(const QuickClock& clock) const {
        constexpr int lastOfAfternoon = 6;
        if (clock.isExact || clock.hour == 0 || clock.hour >= noon) {
            return clock.hour;
        }
        const auto named = half();
        const bool isAfternoon = named ? *named == HalfOfDay::Evening
                                       : clock.isHourAlone && clock.hour <= lastOfAfternoon;
        return isAfternoon && !(clock.isMarked && clock.isHourAlone && !named) ? clock.hour + noon
                                                                               : clock.hour;
    }

    SystemSeconds firstMoment() const {
        const QuickClock clock = m_parts.times ? m_parts.times->from : QuickClock();
        const int hour = m_parts.times ? startHour(clock) : *m_parts.day->hour;
        const cctz::civil_day named = m_parts.day ? m_parts.day->first : m_today;
        const cctz::civil_day day = firstDay(named);
        const SystemSeconds first = m_context.zone.instantOf(at(day, hour, clock.minute));
        if (first > m_context.now || (m_parts.day && !m_parts.day->movesByWeeks)) {
            return first;
        }
        const bool canBeLater = clock.isHourAlone && !clock.isExact && hour < noon &&
                                m_parts.times && !half() && !m_parts.recurrence && !m_parts.day;
        const SystemSeconds later = m_context.zone.instantOf(at(day, hour + noon, clock.minute));
        if (canBeLater && later > m_context.now) {
            return later;
        }
        const cctz::civil_day next =
            m_parts.day ? day + daysOfWeek : firstDay(day + (day == m_today ? 1 : 0));
        return m_context.zone.instantOf(at(next, hour, clock.minute));
    }

    SystemSeconds endAfter(SystemSeconds begin) const {
        const cctz::civil_second start = m_context.zone.localOf(begin);
        const auto moreDays = m_parts.day ? m_parts.day->last - m_parts.day->first : 0;
        if (m_parts.times && m_parts.times->to) {
            return endAt(*m_parts.times->to, start, moreDays);
        }
        const QuickAmount length = m_parts.length.value_or(QuickAmount{1, QuickUnit::Hour});
        if (isExactUnit(length.unit)) {
            const SystemSeconds lastBegin = m_context.zone.instantOf(addDays(start, moreDays));
            return lastBegin + exactLength(length);
        }
        const cctz::civil_day day(start);
        const auto end = movedDay(day, length.count, length.unit);
        return end && !m_parts.recurrence ? m_context.zone.instantOf(addDays(start, *end - day))
                                          : begin + cctz::seconds(hourSeconds);
    }

    /// The first time that this clock shows after the start, of the last day where there are more.
    SystemSeconds endAt(const QuickClock& clock, const cctz::civil_second& start,
                        cctz::diff_t moreDays) const {
        const cctz::civil_day day(start);
        cctz::civil_second end = at(day, clock.hour, clock.minute);
        const bool canBeLater = !clock.isExact && clock.hour < noon;
        if (end <= start && canBeLater) {
            end = at(day, clock.hour + noon, clock.minute);
        }
        if (end <= start && moreDays == 0) {
            end = addDays(at(day, clock.hour, clock.minute), 1);
        }
        return m_context.zone.instantOf(addDays(end, moreDays));
    }

    const QuickParts& m_parts;
    const QuickEntryContext& m_context;
    cctz::civil_day m_today;
};

} // namespace

QuickSchedule quickScheduleOf(const QuickParts& parts, const QuickEntryContext& context) {
    return Scheduler(parts, context).schedule();
}

} // namespace plenzo
