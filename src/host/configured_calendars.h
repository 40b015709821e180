#pragma once

#include "host/calendar_set.h"
#include "host/configuration.h"

namespace plenzo {

/// The calendars that the configuration names, shown as it says: its colours and read-only marks,
/// and its names where a path holds one calendar. A calendar named twice counts once.
CalendarSet loadConfiguredCalendars(const Configuration& configuration);

} // namespace plenzo
