#pragma once

#include <string>
#include <vector>

namespace plenzo {

/// The calendar files of one folder, and what its `displayname` and `color` files say, as calendar
/// sync tools keep them.
struct CalendarFolder {
    std::string path;
    std::vector<std::string> files; // sorted
    std::string displayName;
    std::string color;

    bool isCollection() const { return !displayName.empty() || !color.empty(); }
};

/// What a path names: a file alone, or a folder's .ics files and those of the folders in it.
struct CalendarPaths {
    std::vector<std::string> files;
    std::vector<CalendarFolder> folders;
    std::vector<std::string> problems; // "PATH: why"
};

/// Hidden files are left out. A path that cannot be read, or that holds no .ics file, is a problem.
CalendarPaths calendarPathsOf(const std::string& path);

/// One spelling for every path to the same file.
std::string canonicalPath(const std::string& path);

} // namespace plenzo
