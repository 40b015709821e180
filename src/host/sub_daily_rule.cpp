#include "host/sub_daily_rule.h"

#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

std::int64_t unitSeconds(icalrecurrencetype_frequency frequency) {
    switch (frequency) {
    case ICAL_HOURLY_RECURRENCE:
        return 3600;
    case ICAL_MINUTELY_RECURRENCE:
        return 60;
    default:
        return 1;
    }
}

/// The numbers of one BY part, up to its end mark.
template <std::size_t size>
std::vector<int> numbersOf(const short (&part)[size]) {
    const auto* end = std::find(std::begin(part), std::end(part), ICAL_RECURRENCE_ARRAY_MAX);
    return {std::begin(part), end};
}

bool allows(const std::vector<int>& numbers, int number) {
    return numbers.empty() || std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

/// The number itself, or counted from the end of a period of that length.
bool allowsFromEitherEnd(const std::vector<int>& numbers, int number, int length) {
    return allows(numbers, number) || allows(numbers, number - length - 1);
}

/// The BY parts of a sub-daily rule: the larger ones limit, the smaller ones expand.
class SubDailyParts {
public:
    explicit SubDailyParts(const icalrecurrencetype& parts)
        : m_frequency(parts.freq), m_months(numbersOf(parts.by_month)),
          m_monthDays(numbersOf(parts.by_month_day)), m_yearDays(numbersOf(parts.by_year_day)),
          m_hours(numbersOf(parts.by_hour)), m_minutes(numbersOf(parts.by_minute)),
          m_seconds(numbersOf(parts.by_second)) {
        for (const int day : numbersOf(parts.by_day)) {
            m_weekdays.push_back(icalrecurrencetype_day_day_of_week(static_cast<short>(day)));
        }
    }

    bool isPlain() const {
        return m_months.empty() && m_monthDays.empty() && m_yearDays.empty() &&
               m_weekdays.empty() && m_hours.empty() && m_minutes.empty() && m_seconds.empty();
    }

    /// The times of one step: none where a larger part forbids it, several where a smaller one
    /// expands it (BYMINUTE and BYSECOND of an hourly rule, BYSECOND of a minutely one).
    std::vector<cctz::civil_second> timesOf(const cctz::civil_second& step,
                                            ExpansionBudget& budget) const {
        --budget.steps;
        if (!allowsStep(step)) {
            return {};
        }
        std::vector<cctz::civil_second> times;
        for (const int minute : minutesOf(step)) {
            for (const int second : secondsOf(step)) {
                times.push_back(cctz::civil_second(cctz::civil_hour(step)) + minute * 60 + second);
            }
        }
        budget.steps -= static_cast<std::int64_t>(times.size()) - 1;
        std::sort(times.begin(), times.end());
        return times;
    }

private:
    bool allowsStep(const cctz::civil_second& time) const {
        return allowsDay(cctz::civil_day(time)) && allows(m_hours, time.hour()) &&
               (m_frequency == ICAL_HOURLY_RECURRENCE || allows(m_minutes, time.minute())) &&
               (m_frequency != ICAL_SECONDLY_RECURRENCE || allows(m_seconds, time.second()));
    }

    std::vector<int> minutesOf(const cctz::civil_second& step) const {
        const bool expands = m_frequency == ICAL_HOURLY_RECURRENCE && !m_minutes.empty();
        return expands ? m_minutes : std::vector<int>{step.minute()};
    }

    std::vector<int> secondsOf(const cctz::civil_second& step) const {
        const bool expands = m_frequency != ICAL_SECONDLY_RECURRENCE && !m_seconds.empty();
        return expands ? m_seconds : std::vector<int>{step.second()};
    }

    bool allowsDay(const cctz::civil_day& day) const {
        const cctz::civil_month month(day);
        const cctz::civil_year year(day);
        const int monthLength =
            static_cast<int>(cctz::civil_day(month + 1) - cctz::civil_day(month));
        const int yearLength = static_cast<int>(cctz::civil_day(year + 1) - cctz::civil_day(year));
        const int weekday = (static_cast<int>(cctz::get_weekday(day)) + 1) % 7 + 1;
        return allows(m_months, day.month()) && allows(m_weekdays, weekday) &&
               allowsFromEitherEnd(m_monthDays, day.day(), monthLength) &&
               allowsFromEitherEnd(m_yearDays, cctz::get_yearday(day), yearLength);
    }

    icalrecurrencetype_frequency m_frequency;
    std::vector<int> m_months;
    std::vector<int> m_monthDays;
    std::vector<int> m_yearDays;
    std::vector<int> m_weekdays; // 1 is Sunday
    std::vector<int> m_hours;
    std::vector<int> m_minutes;
    std::vector<int> m_seconds;
};

} // namespace

bool isSubDaily(const icalrecurrencetype& parts) {
    return parts.freq == ICAL_HOURLY_RECURRENCE || parts.freq == ICAL_MINUTELY_RECURRENCE ||
           parts.freq == ICAL_SECONDLY_RECURRENCE;
}

std::vector<cctz::civil_second> subDailyTimes(const icalrecurrencetype& parts,
                                              const cctz::civil_second& start,
                                              const CivilSpan& span, ExpansionBudget& budget) {
    const SubDailyParts by(parts);
    const std::int64_t stride = unitSeconds(parts.freq) * std::max<std::int64_t>(parts.interval, 1);
    const bool mayJump = parts.count == 0 || by.isPlain();
    const std::int64_t skipped =
        mayJump ? std::max<std::int64_t>(0, (span.from - start) / stride) : 0;
    std::int64_t left = parts.count == 0 ? INT64_MAX : parts.count - skipped;
    std::vector<cctz::civil_second> times;
    for (auto step = start + skipped * stride; step < span.to && left > 0; step += stride) {
        for (const cctz::civil_second& time : by.timesOf(step, budget)) {
            if (time < start || time >= span.to || left-- <= 0 || time < span.from) {
                continue;
            }
            --budget.times;
            times.push_back(time);
        }
        if (budget.isSpent()) {
            break;
        }
    }
    return times;
}

} // namespace plenzo
