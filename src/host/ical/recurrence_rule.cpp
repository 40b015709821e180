#include "host/ical/recurrence_rule.h"

#include "host/ical/ical_values.h"
#include "host/ical/stepped_rule.h"

#include <algorithm>
#include <cstdlib>

namespace plenzo {

namespace {

// What a rule costs that gives nothing: the library looks for its first time through 18,000 years.
constexpr std::int64_t barrenRuleSteps = 150'000;

struct IteratorDeleter {
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};
using IteratorPointer = std::unique_ptr<icalrecur_iterator, IteratorDeleter>;

icaltimetype libraryTime(const cctz::civil_second& local, TimeForm form) {
    icaltimetype time = icaltime_null_time();
    time.year = static_cast<int>(local.year());
    time.month = local.month();
    time.day = local.day();
    time.is_date = form == TimeForm::Date ? 1 : 0;
    if (form != TimeForm::Date) {
        time.hour = local.hour();
        time.minute = local.minute();
        time.second = local.second();
    }
    return time;
}

cctz::civil_second civilTime(const icaltimetype& time) {
    return cctz::civil_second(time.year, time.month, time.day, time.hour, time.minute, time.second);
}

// An iterator that is moved must keep the start's time of day: it gives the moved time as it
// stands.
std::int64_t timeOfDay(const cctz::civil_second& local) {
    return local - cctz::civil_second(cctz::civil_day(local));
}

std::int64_t periodDays(icalrecurrencetype_frequency frequency) {
    return frequency == ICAL_YEARLY_RECURRENCE ? 365 : 28;
}

/// Without BYMONTH a BYMONTHDAY of a yearly rule means the day of every month (RFC 5545, 3.3.10);
/// the library takes the start's month alone.
void spellOutMonths(icalrecurrencetype& parts) {
    const bool isMeant = parts.freq == ICAL_YEARLY_RECURRENCE &&
                         parts.by_month_day[0] != ICAL_RECURRENCE_ARRAY_MAX &&
                         parts.by_month[0] == ICAL_RECURRENCE_ARRAY_MAX &&
                         parts.by_year_day[0] == ICAL_RECURRENCE_ARRAY_MAX &&
                         parts.by_week_no[0] == ICAL_RECURRENCE_ARRAY_MAX;
    for (short month = 1; isMeant && month <= 12; ++month) {
        parts.by_month[month - 1] = month;
        parts.by_month[month] = ICAL_RECURRENCE_ARRAY_MAX;
    }
}

/// Steps over months or years with the library's iterator.
class RuleWalk {
public:
    RuleWalk(icalrecurrencetype parts, const CalendarTime& start, const CivilSpan& span)
        : m_span(span), m_start(start.local), m_periodDays(periodDays(parts.freq)) {
        spellOutMonths(parts);
        parts.until = icaltime_null_time(); // the span ends no later, and it shows a barren rule
        m_iterator.reset(icalrecur_iterator_new(parts, libraryTime(start.local, start.form)));
        if (m_iterator && parts.count == 0 && span.from > start.local) {
            m_start = addDays(
                cctz::civil_second(cctz::civil_day(span.from)) + timeOfDay(start.local), -1);
            icalrecur_iterator_set_start(m_iterator.get(), libraryTime(m_start, start.form));
        }
    }

    std::vector<cctz::civil_second> walk(ExpansionBudget& budget) {
        budget.steps -= std::max<std::int64_t>(0, (m_span.to - m_start) / 86400 / m_periodDays) + 1;
        std::vector<cctz::civil_second> times;
        bool hasTimes = false;
        while (m_iterator && !budget.isSpent()) {
            const icaltimetype time = icalrecur_iterator_next(m_iterator.get());
            hasTimes = hasTimes || icaltime_is_null_time(time) == 0;
            if (icaltime_is_null_time(time) != 0 || civilTime(time) >= m_span.to) {
                break;
            }
            --budget.steps;
            if (civilTime(time) >= m_span.from) {
                --budget.times;
                times.push_back(civilTime(time));
            }
        }
        budget.steps -= hasTimes ? 0 : barrenRuleSteps;
        return times;
    }

private:
    CivilSpan m_span;
    cctz::civil_second m_start;
    std::int64_t m_periodDays;
    IteratorPointer m_iterator;
};

} // namespace

RecurrenceRule::RecurrenceRule(const icalrecurrencetype& parts) : m_parts(parts) {
    if (parts.rscale != nullptr) {
        m_calendarScale = std::shared_ptr<char>(parts.rscale, std::free);
    }
}

std::optional<RecurrenceRule> RecurrenceRule::fromText(const std::string& text) {
    const icalrecurrencetype parts = icalrecurrencetype_from_string(text.c_str());
    RecurrenceRule rule(parts);
    return parts.freq == ICAL_NO_RECURRENCE ? std::nullopt : std::optional(std::move(rule));
}

std::vector<cctz::civil_second> RecurrenceRule::localTimes(const CalendarTime& start,
                                                           const CivilSpan& span,
                                                           const CalendarZone& systemZone,
                                                           ExpansionBudget& budget) const {
    CivilSpan allowed = span;
    if (const auto last = lastLocalTime(m_parts, start, systemZone)) {
        allowed.to = std::min(allowed.to, *last + 1);
    }
    if (allowed.to <= start.local || allowed.to <= allowed.from || budget.isSpent()) {
        return {};
    }
    if (goesBySteps(m_parts)) {
        return steppedTimes(m_parts, start.local, allowed, budget);
    }
    return RuleWalk(m_parts, start, allowed).walk(budget);
}

std::optional<cctz::civil_second> lastLocalTime(const icalrecurrencetype& parts,
                                                const CalendarTime& start,
                                                const CalendarZone& systemZone) {
    const auto until = icaltime_is_null_time(parts.until) != 0
                           ? std::nullopt
                           : calendarTimeOf(parts.until, std::nullopt);
    if (!until) {
        return std::nullopt;
    }
    if (until->form == TimeForm::Date) {
        return addDays(until->local, 1) - 1;
    }
    if (until->form == TimeForm::Floating) {
        return until->local;
    }
    return zoneOf(start, systemZone).localOf(until->zone.instantOf(until->local));
}

} // namespace plenzo
