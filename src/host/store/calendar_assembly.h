#pragma once

#include "host/ical/calendar.h"
#include "host/store/stored_path.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// Paths whose calendars belong together, and how these are to be shown. A file that several of
/// the paths lead to counts once.
struct CalendarSource {
    std::vector<std::string> paths;
    std::string title; // of the calendar, where there is only one; empty for its own
    std::optional<std::uint32_t> color;
    bool isReadOnly = false;

    bool operator==(const CalendarSource&) const = default;
};

/// The calendars of a source, in the order of its paths. A file is a calendar; a folder is one of
/// those of its files that are items of it (see `decideKinds`). A calendar is named by the source,
/// else by itself, else by its folder's or file's name.
std::vector<Calendar> assembledCalendars(const CalendarSource& source,
                                         const std::vector<StoredPath>& paths);

} // namespace plenzo
