#pragma once

#include "host/ical/calendar.h"
#include "host/occurrences/occurrence_expansion.h"
#include "propertylist/array.h"

namespace plenzo {

/// Adds the event dictionaries of one series: one record for each occurrence that touches the
/// window or has an alarm in it, and for an event of several days one for each of its days in the
/// window. Of to-dos: the undone ones that are due in the window, overdue (of a recurring one the
/// last occurrence, looked for two years back) or without dates, and the ones that were completed,
/// or were due and are completed, in the window. Alarms stand on the first day of an occurrence and
/// on no completed to-do; an absolute alarm of a series on its first occurrence after the alarm, so
/// that it goes off once.
void addSeriesRecords(const Series& series, const Calendar& calendar, const ExpansionWindow& window,
                      ExpansionBudget& budget, Array& records);

} // namespace plenzo
