#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/content_blocks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// What an iCalendar text holds: the name and colour that it gives itself, its events and to-dos,
/// and what was wrong with it.
struct CalendarText {
    std::string title; // NAME (RFC 7986) or X-WR-CALNAME
    std::optional<std::uint32_t> color;
    std::vector<CalendarItem> items;
    std::vector<FileProblem> problems;
};

/// Reads in time and memory proportional to the text. A damaged component is left out and named. A
/// text without any calendar in it has a problem of line 0.
CalendarText readCalendarText(std::string_view text);

} // namespace plenzo
