#include "host/ical/step_parts.h"

#include <algorithm>
#include <cstdint>

namespace plenzo {

namespace {

bool allows(const std::vector<int>& numbers, int number) {
    return numbers.empty() || std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

/// The number itself, or counted from the end of a period of that length.
bool allowsFromEitherEnd(const std::vector<int>& numbers, int number, int length) {
    return allows(numbers, number) || allows(numbers, number - length - 1);
}

/// The step's own number where its part does not expand it.
std::vector<int> expansionOf(const std::vector<int>& part, bool expands, int own) {
    return expands && !part.empty() ? part : std::vector<int>{own};
}

int weekdayOf(const cctz::civil_second& time) {
    return (static_cast<int>(cctz::get_weekday(cctz::civil_day(time))) + 1) % 7 + 1; // 1 is Sunday
}

} // namespace

StepParts::StepParts(const icalrecurrencetype& parts, const cctz::civil_second& start)
    : m_frequency(parts.freq), m_months(numbersOf(parts.by_month)),
      m_monthDays(numbersOf(parts.by_month_day)), m_yearDays(numbersOf(parts.by_year_day)),
      m_hours(numbersOf(parts.by_hour)), m_minutes(numbersOf(parts.by_minute)),
      m_seconds(numbersOf(parts.by_second)), m_positions(numbersOf(parts.by_set_pos)) {
    for (const int day : numbersOf(parts.by_day)) {
        m_weekdays.push_back(icalrecurrencetype_day_day_of_week(static_cast<short>(day)));
    }
    m_isPlain = m_months.empty() && m_monthDays.empty() && m_yearDays.empty() &&
                m_weekdays.empty() && m_hours.empty() && m_minutes.empty() && m_seconds.empty() &&
                m_positions.empty();
    if (m_frequency == ICAL_WEEKLY_RECURRENCE && m_weekdays.empty()) {
        m_weekdays.push_back(weekdayOf(start));
    }
}

std::vector<cctz::civil_second> StepParts::timesOf(const cctz::civil_second& step) const {
    std::vector<cctz::civil_second> times =
        m_frequency == ICAL_WEEKLY_RECURRENCE ? timesOfWeek(step) : timesOfDay(step);
    return m_positions.empty() ? times : atPositions(times);
}

std::vector<cctz::civil_second> StepParts::timesOfWeek(const cctz::civil_second& step) const {
    std::vector<cctz::civil_second> times;
    for (int day = 0; day < 7; ++day) {
        const auto more = timesOfDay(addDays(step, day));
        times.insert(times.end(), more.begin(), more.end());
    }
    return times;
}

std::vector<cctz::civil_second> StepParts::timesOfDay(const cctz::civil_second& step) const {
    return allowsStep(step) ? expanded(step) : std::vector<cctz::civil_second>();
}

// The units are numbered from the second up.
bool StepParts::isShorterThan(icalrecurrencetype_frequency unit) const {
    return m_frequency < unit;
}

bool StepParts::allowsStep(const cctz::civil_second& step) const {
    return allowsDay(cctz::civil_day(step)) &&
           (!isShorterThan(ICAL_DAILY_RECURRENCE) || allows(m_hours, step.hour())) &&
           (!isShorterThan(ICAL_HOURLY_RECURRENCE) || allows(m_minutes, step.minute())) &&
           (!isShorterThan(ICAL_MINUTELY_RECURRENCE) || allows(m_seconds, step.second()));
}

bool StepParts::allowsDay(const cctz::civil_day& day) const {
    const cctz::civil_month month(day);
    const cctz::civil_year year(day);
    const int monthLength = static_cast<int>(cctz::civil_day(month + 1) - cctz::civil_day(month));
    const int yearLength = static_cast<int>(cctz::civil_day(year + 1) - cctz::civil_day(year));
    return allows(m_months, day.month()) &&
           allows(m_weekdays, weekdayOf(cctz::civil_second(day))) &&
           allowsFromEitherEnd(m_monthDays, day.day(), monthLength) &&
           allowsFromEitherEnd(m_yearDays, cctz::get_yearday(day), yearLength);
}

std::vector<cctz::civil_second> StepParts::expanded(const cctz::civil_second& step) const {
    const cctz::civil_day day(step);
    std::vector<cctz::civil_second> times;
    for (const int hour :
         expansionOf(m_hours, !isShorterThan(ICAL_DAILY_RECURRENCE), step.hour())) {
        for (const int minute :
             expansionOf(m_minutes, !isShorterThan(ICAL_HOURLY_RECURRENCE), step.minute())) {
            for (const int second :
                 expansionOf(m_seconds, !isShorterThan(ICAL_MINUTELY_RECURRENCE), step.second())) {
                times.emplace_back(day.year(), day.month(), day.day(), hour, minute, second);
            }
        }
    }
    std::sort(times.begin(), times.end());
    return times;
}

std::vector<cctz::civil_second>
StepParts::atPositions(const std::vector<cctz::civil_second>& times) const {
    std::vector<cctz::civil_second> chosen;
    const int count = static_cast<int>(times.size());
    for (int position = 1; position <= count; ++position) {
        if (allowsFromEitherEnd(m_positions, position, count)) {
            chosen.push_back(times[static_cast<std::size_t>(position - 1)]);
        }
    }
    return chosen;
}

} // namespace plenzo
