#pragma once

#include "host/calendar.h"

#include <string>
#include <vector>

namespace plenzo {

/// The calendars of some paths, and what was wrong with their files.
struct CalendarSet {
    std::vector<Calendar> calendars;
    std::vector<std::string> problems; // "PATH:LINE: text" or "PATH: text"
};

/// Reads files, and folders with the folders in them. A file is a calendar; a folder with a
/// `displayname` or `color` file is one calendar of all its files, and so is one with several files
/// of which none has a name and each holds a single event or to-do. A calendar is named by itself,
/// else by its folder's or file's name. A path given twice counts once.
CalendarSet loadCalendars(const std::vector<std::string>& paths);

} // namespace plenzo
