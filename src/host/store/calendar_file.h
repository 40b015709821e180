#pragma once

#include "host/calendar.h"

#include <string>

namespace plenzo {

/// Reads the file, whatever it may be: what cannot be read, or is no calendar, has problems.
CalendarFilePointer readCalendarFile(const std::string& path);

/// The file as it is now: the known one as long as nobody wrote to it since it was read.
CalendarFilePointer currentCalendarFile(const std::string& path, const CalendarFilePointer& known);

} // namespace plenzo
