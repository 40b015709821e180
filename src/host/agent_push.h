#pragma once

#include "host/store/calendar_set.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <vector>

namespace plenzo {

/// Everything that the agent is told.
struct AgentPush {
    Dictionary preferences;
    Array sourceList; // one group heading with the calendars as its children
    Array events;
};

Array sourceListOf(const std::vector<Calendar>& calendars);

/// The push as one dictionary: "preferences", "calendars" (the source list) and "events".
Dictionary pushAsDictionary(const AgentPush& push);

} // namespace plenzo
