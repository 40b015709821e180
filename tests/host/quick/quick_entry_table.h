#pragma once

#include "host/quick/quick_entry.h"

#include <string>
#include <vector>

namespace plenzo {

/// A line of tests/data/quick_entries.txt.
struct QuickEntryRow {
    int line = 0;
    std::string text;
    std::string expected; // as lineOf writes it
    QuickEntryContext context;
    std::string zoneName;
};

std::vector<QuickEntryRow> quickEntryTable();

/// " | event | TITLE | START | END | RULE | LOCATION", times as "2026-12-24T18:30".
std::string lineOf(const QuickEntry& entry);

/// The same for one time, empty for none.
std::string timeText(const std::optional<CalendarTime>& time);

} // namespace plenzo
