#pragma once

#include "host/ical/calendar_item.h"

#include <cstdint>
#include <optional>

namespace plenzo {

/// The end (exclusive), or the due time, of the instance of an item that starts at `start`: by
/// DTEND or DUE an instance lasts exactly as long as the first one, by DURATION nominally so (RFC
/// 5545, 3.8.5.3). An event without either lasts a day when it is all-day and no time otherwise; a
/// to-do has no end then. An end before the start counts as no time.
std::optional<CalendarTime> endOf(const CalendarItem& item, const CalendarTime& start,
                                  const CalendarZone& systemZone);

/// How long an instance lasts, at least 0.
std::int64_t lengthSeconds(const CalendarItem& item, const CalendarZone& systemZone);

} // namespace plenzo
