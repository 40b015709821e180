#include "host/store/calendar_records.h"

#include "host/store/calendar_expansion.h"

namespace plenzo {

CalendarRecords calendarRecords(const Calendar& calendar, const ExpansionWindow& window) {
    CalendarExpansion expansion;
    RecordChanges changes;
    expansion.update(calendar, window, changes);
    CalendarRecords result;
    expansion.appendTo(result.records);
    result.problems = std::move(changes.problems);
    return result;
}

} // namespace plenzo
