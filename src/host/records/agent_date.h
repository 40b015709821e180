#pragma once

#include "host/ical/calendar_time.h"
#include "propertylist/value_type.h"

#include <cstdint>

namespace plenzo {

/// Dates as the agent's records carry them.

Date agentDate(SystemSeconds instant);

/// The instant so many seconds after 2001-01-01 00:00:00 UTC.
SystemSeconds instantFromAgentSeconds(std::int64_t seconds);

/// A day as 12:00:00 UTC of that day, a floating time as its wall clock in UTC, a zoned time as its
/// instant.
Date agentDate(const CalendarTime& time);

} // namespace plenzo
