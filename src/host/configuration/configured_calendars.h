#pragma once

#include "host/configuration/configuration.h"
#include "host/store/calendar_assembly.h"
#include "host/store/calendar_set.h"

#include <vector>

namespace plenzo {

/// The calendars of the configuration, one source for each.
std::vector<CalendarSource> configuredSources(const Configuration& configuration);

/// The calendars that the configuration names, shown as it says: its colours and read-only marks,
/// and its names where a path holds one calendar. A calendar named twice counts once.
CalendarSet loadConfiguredCalendars(const Configuration& configuration);

} // namespace plenzo
