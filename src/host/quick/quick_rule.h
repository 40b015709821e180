#pragma once

#include "host/quick/quick_parts.h"

namespace plenzo {

/// The value of an RRULE (RFC 5545, 3.3.10) for a series with this start. A length of days or more
/// says how long it goes on. An end before the start leaves the start alone.
std::string quickRule(const QuickRecurrence& recurrence, const std::optional<QuickAmount>& length,
                      const CalendarTime& start);

} // namespace plenzo
