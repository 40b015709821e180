#pragma once

#include "dates/time_zone.h"
#include "propertylist/dictionary.h"

#include <string>

namespace plenzo {

/// Prints the pending alarms of the running agent as a table on standard output. Gives the
/// program's exit code: 0, or 1 with a message on standard error when no agent runs or it does not
/// answer.
int listPendingAlarms();

/// A line for each pending alarm, under a heading: when it fires in the zone, what it does, the
/// title, and the event's "uid". Rows are those of the inspector.
[[nodiscard]] std::string pendingAlarmsTable(const Array& rows, const TimeZone& timeZone);

} // namespace plenzo
