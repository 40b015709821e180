#pragma once

#include "host/ical/calendar.h"
#include "host/occurrences/occurrence_expansion.h"
#include "propertylist/array.h"

#include <string>
#include <vector>

namespace plenzo {

/// The event dictionaries of a calendar for the window, and what could not be expanded.
struct CalendarRecords {
    Array records;
    std::vector<std::string> problems;
};

/// Those of each series of the calendar (see `addSeriesRecords`), by the kinds and identifiers of
/// their items.
CalendarRecords calendarRecords(const Calendar& calendar, const ExpansionWindow& window);

} // namespace plenzo
