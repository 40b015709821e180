#pragma once

#include "host/ical/calendar_time.h"

#include <string>

namespace plenzo {

/// Times for a person, in the user's language, on the wall clock of the zone.

/// "Monday, 23 November 2026, 10:00"; a date has no time.
std::string timeText(const CalendarTime& time, const CalendarZone& zone);

/// From one to the other, which is exclusive: what both share is said once, and so is a day.
std::string spanText(const CalendarTime& start, const CalendarTime& end, const CalendarZone& zone);

} // namespace plenzo
