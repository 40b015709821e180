#include "host/recurrence_rule.h"

#include "host/ical_values.h"
#include "host/sub_daily_rule.h"

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
    switch (frequency) {
    case ICAL_YEARLY_RECURRENCE:
        return 365;
    case ICAL_MONTHLY_RECURRENCE:
        return 28;
    case ICAL_WEEKLY_RECURRENCE:
        return 7;
    default:
        return 1;
    }
}

/// Steps over whole days with the library's iterator, which is told to end with the span.
class RuleWalk {
public:
    RuleWalk(icalrecurrencetype parts, const CalendarTime& start, const CivilSpan& span)
        : m_span(span), m_start(start.local) {
        parts.until = libraryTime(span.to, start.form);
        m_periodDays = periodDays(parts.freq);
        m_iterator.reset(icalrecur_iterator_new(parts, libraryTime(start.local, start.form)));
        if (m_iterator && parts.count == 0 && span.from > start.local) {
            m_start =
                addDays(cctz::civil_second(cctz::civil_day(span.from)) + timeOfDay(m_start), -1);
            icalrecur_iterator_set_start(m_iterator.get(), libraryTime(m_start, start.form));
        }
    }

    std::vector<cctz::civil_second> walk(ExpansionBudget& budget) {
        std::vector<cctz::civil_second> times;
        budget.steps -= std::max<std::int64_t>(0, (m_span.to - m_start) / 86400 / m_periodDays) + 1;
        bool hasTimes = false;
        while (m_iterator && !budget.isSpent()) {
            const icaltimetype time = icalrecur_iterator_next(m_iterator.get());
            if (icaltime_is_null_time(time) != 0 || civilTime(time) >= m_span.to) {
                break;
            }
            hasTimes = true;
            --budget.steps;
            if (civilTime(time) >= m_span.from) {
                --budget.times;
                times.push_back(civilTime(time));
            }
        }
        budget.steps -= hasTimes || m_periodDays < 28 ? 0 : barrenRuleSteps;
        return times;
    }

private:
    CivilSpan m_span;
    cctz::civil_second m_start;
    std::int64_t m_periodDays = 1;
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
    if (isSubDaily(m_parts)) {
        return subDailyTimes(m_parts, start.local, allowed, budget);
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
