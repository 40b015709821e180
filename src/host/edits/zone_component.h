#pragma once

#include "host/ical/calendar_zone.h"

#include <string>

namespace plenzo {

/// The VTIMEZONE (RFC 5545, 3.6.5) of a zone of the system's database, which RFC 5545 wants beside
/// every time that names the zone: its rules from that instant on. Empty for an unknown
/// zone, and where the rules of ICU's database are not those of the system's.
std::string zoneComponent(const std::string& zoneName, SystemSeconds from);

} // namespace plenzo
