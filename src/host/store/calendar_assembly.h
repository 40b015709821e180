#pragma once

#include "host/ical/calendar.h"
#include "host/store/stored_path.h"

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace plenzo {

/// Paths whose calendars belong together, and how these are to be shown.
struct CalendarSource {
    std::vector<std::string> paths;
    std::string title; // of the calendar, where there is only one; empty for its own
    std::optional<std::uint32_t> color;
    bool isReadOnly = false;

    bool operator==(const CalendarSource&) const = default;
};

/// Puts the calendars of several sources together, one source after the other. A file that several
/// paths lead to counts once, for the first of them.
class CalendarAssembly {
public:
    /// Of all the paths of all sources.
    explicit CalendarAssembly(const std::vector<const StoredPath*>& paths);

    /// The calendars of the next source, in the order of its paths. A file is a calendar; a folder
    /// is one of those of its files that are items of it (see `decideKinds`). A calendar is named
    /// by the source, else by itself, else by its folder's or file's name.
    std::vector<Calendar> calendarsOf(const CalendarSource& source,
                                      const std::vector<StoredPath>& paths);

private:
    void add(const StoredPath& path);
    void addFolder(const StoredFolder& folder);
    bool isNew(const std::string& realPath);
    std::vector<StoredFile> newFilesOf(const StoredFolder& folder);

    bool m_mayRepeat; // else no file has to be remembered
    std::unordered_set<std::string> m_known;
    std::vector<Calendar> m_calendars; // of the source
    int m_takenCount = 0;              // of its calendars, which another source has
};

} // namespace plenzo
