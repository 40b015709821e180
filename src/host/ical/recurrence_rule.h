#pragma once

#include "host/ical/calendar_time.h"

#include <libical/ical.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// Local times from `from` (inclusive) to `to` (exclusive).
struct CivilSpan {
    cctz::civil_second from;
    cctz::civil_second to;
};

/// How much work expanding may still cost: steps of a rule, found or not, and found times. A rule
/// stops where either is used up, so that no rule can take for ever.
struct ExpansionBudget {
    std::int64_t steps = 0;
    std::int64_t times = 0;

    bool isSpent() const { return steps <= 0 || times <= 0; }
};

/// One RRULE or EXRULE (RFC 5545, 3.3.10): the local times that it gives.
class RecurrenceRule {
public:
    /// Nothing for a text that is no rule.
    static std::optional<RecurrenceRule> fromText(const std::string& text);

    /// The rule's times within the span in ascending order, counted from `start` on; UNTIL is read
    /// in the start's zone. `start` itself is among them only where the rule gives it.
    std::vector<cctz::civil_second> localTimes(const CalendarTime& start, const CivilSpan& span,
                                               const CalendarZone& systemZone,
                                               ExpansionBudget& budget) const;

    const icalrecurrencetype& parts() const { return m_parts; }

private:
    explicit RecurrenceRule(const icalrecurrencetype& parts);

    icalrecurrencetype m_parts;
    std::shared_ptr<char> m_calendarScale; // what m_parts.rscale points to
};

/// The last local time that UNTIL allows for a series with this start, or nothing without UNTIL. A
/// date allows the whole day.
std::optional<cctz::civil_second> lastLocalTime(const icalrecurrencetype& parts,
                                                const CalendarTime& start,
                                                const CalendarZone& systemZone);

} // namespace plenzo
