#pragma once

#include "host/calendar.h"
#include "host/occurrence_expansion.h"
#include "propertylist/array.h"

#include <string>
#include <vector>

namespace plenzo {

/// The event dictionaries of a calendar for the window, and what could not be expanded.
struct CalendarRecords {
    Array records;
    std::vector<std::string> problems;
};

/// One record for each occurrence that touches the window or has an alarm in it, and for an event
/// of several days one for each of its days in the window. Of to-dos: the undone ones that are due
/// in the window, overdue (of a recurring one the last occurrence, looked for two years back) or
/// without dates, and the ones that were completed, or were due and are completed, in the window.
/// Alarms stand on the first day of an occurrence and on no completed to-do; an absolute alarm of a
/// series on its first occurrence after the alarm, so that it goes off once.
/// A series gives at most 10,000 occurrences; the work for one calendar is bounded.
CalendarRecords calendarRecords(const Calendar& calendar, const ExpansionWindow& window);

} // namespace plenzo
