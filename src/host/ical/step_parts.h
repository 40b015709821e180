#pragma once

#include "host/ical/calendar_time.h"

#include <libical/ical.h>

#include <cstddef>
#include <iterator>
#include <vector>

namespace plenzo {

/// The numbers of one BY part of a rule, which ends with a mark unless it is full.
template <std::size_t size>
std::vector<int> numbersOf(const short (&part)[size]) {
    std::vector<int> numbers;
    for (const short number : part) {
        if (number == ICAL_RECURRENCE_ARRAY_MAX) {
            break;
        }
        numbers.push_back(number);
    }
    return numbers;
}

/// The BY parts of a rule that goes by steps of weeks or less: those of longer units than the step
/// limit it, those of shorter units expand it (RFC 5545, 3.3.10). A step of weeks begins on the
/// first day of its week.
class StepParts {
public:
    StepParts(const icalrecurrencetype& parts, const cctz::civil_second& start);

    /// Whether every step gives exactly one time.
    bool isPlain() const { return m_isPlain; }

    /// The times of one step in ascending order: none where a part forbids it.
    std::vector<cctz::civil_second> timesOf(const cctz::civil_second& step) const;

private:
    std::vector<cctz::civil_second> timesOfWeek(const cctz::civil_second& step) const;
    std::vector<cctz::civil_second> timesOfDay(const cctz::civil_second& step) const;
    bool allowsStep(const cctz::civil_second& step) const;
    bool allowsDay(const cctz::civil_day& day) const;
    std::vector<cctz::civil_second> expanded(const cctz::civil_second& step) const;
    std::vector<cctz::civil_second> atPositions(const std::vector<cctz::civil_second>& times) const;
    bool isShorterThan(icalrecurrencetype_frequency unit) const;

    icalrecurrencetype_frequency m_frequency;
    bool m_isPlain = false;
    std::vector<int> m_months;
    std::vector<int> m_monthDays;
    std::vector<int> m_yearDays;
    std::vector<int> m_weekdays; // 1 is Sunday
    std::vector<int> m_hours;
    std::vector<int> m_minutes;
    std::vector<int> m_seconds;
    std::vector<int> m_positions; // of BYSETPOS
};

} // namespace plenzo
