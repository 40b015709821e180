#pragma once

#include "host/ical/calendar.h"

#include <string>
#include <vector>

namespace plenzo {

/// The calendars of some paths, and what was wrong with their files.
struct CalendarSet {
    std::vector<Calendar> calendars;
    std::vector<std::string> problems; // "PATH:LINE: text" or "PATH: text"
};

/// Reads files, and folders with the folders in them (see `assembledCalendars`). A path given twice
/// counts once.
CalendarSet loadCalendars(const std::vector<std::string>& paths);

} // namespace plenzo
