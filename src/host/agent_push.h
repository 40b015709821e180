#pragma once

#include "host/calendar_set.h"
#include "host/occurrence_expansion.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <string>
#include <vector>

namespace plenzo {

/// Everything that the agent is told, and what was wrong on the way.
struct AgentPush {
    Dictionary preferences;
    Array sourceList; // one group heading with the calendars as its children
    Array events;
    std::vector<std::string> problems;
};

AgentPush agentPush(const CalendarSet& set, const ExpansionWindow& window);

/// The push as one dictionary: "preferences", "calendars" (the source list) and "events".
Dictionary pushAsDictionary(const AgentPush& push);

} // namespace plenzo
