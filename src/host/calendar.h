#pragma once

#include "host/calendar_item.h"

#include <cstdint>
#include <string>
#include <vector>

namespace plenzo {

/// One calendar as the person knows it: its name, its colour and what it holds.
struct Calendar {
    std::string uid; // URL-safe, the same in every run
    std::string title;
    std::uint32_t color = 0; // 0xRRGGBB
    bool isReadOnly = false;
    std::vector<std::string> files; // their paths
    std::vector<CalendarItem> items;
};

} // namespace plenzo
