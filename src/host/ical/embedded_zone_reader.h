#pragma once

#include "host/ical/calendar_zone.h"

#include <memory>
#include <string>
#include <string_view>

namespace plenzo {

/// The TZID of a VTIMEZONE's text, or empty.
std::string zoneNameOfDefinition(std::string_view text);

/// The zone that a VTIMEZONE (RFC 5545, 3.6.5) defines, its changes expanded to the year 2100.
/// Null when it has no observance with a start and its two offsets. A rule that would give more
/// than 1,000 changes gives the first 1,000.
std::shared_ptr<const EmbeddedZone> embeddedZoneFromText(std::string_view text);

} // namespace plenzo
