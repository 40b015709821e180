#pragma once

#include "host/ical/calendar_zone.h"

#include <optional>
#include <string_view>

namespace plenzo {

/// A time as RFC 3339 writes it, "2026-11-23T09:00:00+01:00", in whole seconds: a fraction is cut
/// off. Nothing for anything else; the offset, or "Z", is part of it.
std::optional<SystemSeconds> instantFromRfc3339(std::string_view text);

/// A day alone, "2026-11-23". Nothing for anything else, and for a day that no month has.
std::optional<cctz::civil_day> dayFromRfc3339(std::string_view text);

} // namespace plenzo
