#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/content_blocks.h"
#include "host/ical/zone_table.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// An item as it was read, and what was wrong with it.
struct ReadItem {
    std::optional<CalendarItem> item;
    std::vector<std::string> problems;
};

/// The item of a VEVENT or VTODO block. A damaged property costs that property alone; an event
/// whose start is missing or no date is no item.
ReadItem readItem(const ComponentBlock& block, ZoneTable& zones);

} // namespace plenzo
