#pragma once

#include "host/edits/edit_targets.h"
#include "host/ical/calendar.h"

#include <string>

namespace plenzo {

/// What there is to read about one occurrence of an item; texts that it has not are empty.
struct ItemSummary {
    std::string title;
    std::string when; // in the user's language and the zone
    std::string repeats;
    std::string location;
    std::string calendar;
    std::string people;
    std::string url;
    std::string notes;
    std::uint32_t color = 0; // of its calendar, 0xRRGGBB
    bool isCompleted = false;
};

ItemSummary itemSummary(const Calendar& calendar, const OccurrenceTarget& target,
                        const CalendarZone& zone);

/// A whole HTML page, for light and dark screens.
std::string summaryPage(const ItemSummary& summary);

/// A few lines of plain text, without the title.
std::string summaryText(const ItemSummary& summary);

} // namespace plenzo
