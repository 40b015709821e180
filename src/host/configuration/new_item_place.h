#pragma once

#include "host/configuration/configuration.h"
#include "host/ical/calendar.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// Where a new event or to-do is written, or why it can be written nowhere.
struct NewItemPlace {
    enum class Kind : std::uint8_t {
        File,  // added to this file, which is made when it does not exist
        Folder // in a file of its own in this folder
    };

    Kind kind = Kind::File;
    std::string path;
    std::string error; // empty when there is a place

    /// The file for an item with this UID.
    [[nodiscard]] std::string fileFor(std::string_view uid) const;
};

/// The default calendar's place; when none is the default, that of the first that can be written.
/// A default that cannot be written is an error: the item would go where nobody looks for it.
///
/// A file is its own place. A folder's is that of the first calendar in it that can be written: the
/// folder of a calendar with a file for each item, else the calendar's file; of a folder without
/// calendars the folder itself. `calendars` are those that were read from the configured ones.
NewItemPlace newItemPlace(const std::vector<ConfiguredCalendar>& configured,
                          const std::vector<Calendar>& calendars);

/// Those of the calendars that lie in the folder, or in a folder in it.
std::vector<const Calendar*> calendarsInFolder(const std::string& folder,
                                               const std::vector<Calendar>& calendars);

} // namespace plenzo
