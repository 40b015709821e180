#pragma once

#include "dates/calendar_date.h"
#include "model/event_dict.h"

#include <compare>
#include <cstdint>
#include <optional>

namespace plenzo {

class TitleOrder;

/// One reminder entry of one occurrence at one fire time.
struct Alarm {
    /// When the alarm fires. Nothing for a proximity alarm of an undated item.
    std::optional<CalendarDate> fireDate;
    EventDict eventDict;
    /// The alarm definition out of the occurrence's "rem".
    Dictionary reminderDict;
    /// For an absolute alarm the whole days between the present day and the occurrence's; else 0.
    std::int64_t fireDay = 0;
};

/// The order of the alarm queue: fire date (none before all), then "type" of the events, title in
/// the user's language, fire day.
[[nodiscard]] std::weak_ordering compareFireDate(const Alarm& left, const Alarm& right,
                                                 const TitleOrder& titles);

} // namespace plenzo
