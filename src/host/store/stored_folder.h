#pragma once

#include "host/ical/calendar.h"
#include "host/store/calendar_folder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace plenzo {

/// What counts of a file, which may have gone a moment ago.
struct StoredFile {
    enum class Kind : std::uint8_t {
        Undecided,
        OwnCalendar,  // a calendar of its own
        ItemOfFolder, // one of the files of its folder's calendar
    };

    CalendarFilePointer file; // null for none
    std::string realPath;     // when it was last there
    Kind kind = Kind::Undecided;
};

/// A folder with what was read of its files: `folder.files` is empty, `files` are in its place.
struct StoredFolder {
    CalendarFolder folder;
    std::string absolutePath;
    std::vector<StoredFile> files; // by their paths
    bool isCollection = false;     // or was one
};

/// Decides for those files that are undecided. All files of a collection are items of it. In other
/// folders those are that hold one item and no name, where there are several or the file is named
/// after the item; so what a file is hardly depends on the files beside it.
void decideKinds(StoredFolder& folder);

/// Decides as if nothing had been decided before.
void decideKindsAnew(StoredFolder& folder);

} // namespace plenzo
