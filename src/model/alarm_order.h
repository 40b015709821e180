#pragma once

#include "model/alarm.h"
#include "model/title_order.h"

#include <compare>
#include <cstdint>
#include <limits>
#include <string_view>

namespace plenzo {

// Two orders of alarms. Both are strict weak orders over all records, whatever they hold: an absent
// or unreadable fire date comes before all others, and absent keys read as 0 or as an empty title.

/// The order of display: the day index, holidays before others, events before to-dos, all-day items
/// before timed ones, the fire date, the priority (1 first, none last), the title.
[[nodiscard]] std::weak_ordering compare(const Alarm& left, const Alarm& right,
                                         const TitleOrder& titles);

/// The order of the alarm queue: the fire date, events before to-dos, the title, the day index.
[[nodiscard]] std::weak_ordering compareFireDate(const Alarm& left, const Alarm& right,
                                                 const TitleOrder& titles);

/// What the order of the queue looks at when the fire dates are equal. Points into the record,
/// which must not change meanwhile.
struct FireDateTie {
    FireDateTie(const Dictionary& eventDict, std::int64_t day);
    explicit FireDateTie(const Alarm& alarm)
        : FireDateTie(alarm.eventDict ? *alarm.eventDict : Dictionary(), alarm.fireDay) {}

    std::int64_t eventType;
    std::string_view title;
    std::int64_t fireDay;
};

[[nodiscard]] std::weak_ordering compare(const FireDateTie& left, const FireDateTie& right,
                                         const TitleOrder& titles);

/// The alarm's fire date as both orders take it: NaN, which is before every other instant, when
/// there is none.
[[nodiscard]] inline Instant fireInstant(const Alarm& alarm) {
    constexpr Instant beforeAll(std::numeric_limits<double>::quiet_NaN());
    return alarm.fireDate ? alarm.fireDate->instant() : beforeAll;
}

} // namespace plenzo
