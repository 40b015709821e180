#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// One folder of calendar files, and what its `displayname` and `color` files say, as calendar sync
/// tools keep them.
struct CalendarFolder {
    std::string path;
    std::string realPath;           // without links
    std::vector<std::string> files; // the paths of its .ics files, sorted
    bool hasLinks = false;          // a file or folder in it is a link
    std::string displayName;
    std::string color;

    bool isCollection() const { return !displayName.empty() || !color.empty(); }
};

/// What a path names: a file alone, or a folder and the folders in it.
struct CalendarPaths {
    std::vector<std::string> files;
    std::vector<CalendarFolder> folders;
    std::vector<std::string> problems; // "PATH: why"
};

/// Hidden files are left out. A path that cannot be read, or that holds no .ics file, is a problem.
CalendarPaths calendarPathsOf(const std::string& path);

/// Whether files of that name are calendars.
bool isCalendarFileName(std::string_view name);

/// Whether a file of that name says something about its folder.
bool isFolderDescription(std::string_view name);

} // namespace plenzo
