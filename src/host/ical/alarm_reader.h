#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/ical_values.h"

#include <string>
#include <vector>

namespace plenzo {

/// The VALARM parts of a component (RFC 5545, 3.6.6; UID and ACKNOWLEDGED of RFC 9074): the first
/// 50, without those whose trigger is missing. An alarm repeats at most 30 times. An alarm without
/// a UID gets one made of what it does and when, so that its place among the others does not
/// matter.
std::vector<AlarmDefinition> alarmsOf(icalcomponent* component, ZoneTable& zones);

/// The UIDs that these alarms of a component have, or had before they were given one of their own.
std::vector<std::string> derivedUidsOf(const std::vector<AlarmDefinition>& alarms);

} // namespace plenzo
