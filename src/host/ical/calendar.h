#pragma once

#include "host/files/file_stamp.h"
#include "host/ical/calendar_item.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// A calendar file as it was read. It does not change any more: a file that is read again is
/// another one.
struct CalendarFile {
    std::string path;
    FileStamp stamp;              // from before it was read
    bool hasLastingStamp = false; // no change since can have left it as it is
    std::size_t amendmentVersion = 0;
    bool isWritable = false;
    bool isCalendar = false; // it could be read, and is one
    bool isWhole = false;    // it ends as a calendar does
    bool holdsOneItem = false;
    bool isNamedAfterItem = false; // the one that it holds
    std::string title;             // what it calls itself, if it does
    std::optional<std::uint32_t> color;
    std::vector<CalendarItem> items;
    std::vector<std::string> problems; // "PATH:LINE: text" or "PATH: text"
};

using CalendarFilePointer = std::shared_ptr<const CalendarFile>;

/// One calendar as the person knows it: its name, its colour and what it holds.
struct Calendar {
    std::string uid; // URL-safe, the same in every run
    std::string title;
    std::uint32_t color = 0; // 0xRRGGBB
    bool isReadOnly = false;
    bool isFolder = false;                  // with a file for each item
    std::vector<CalendarFilePointer> files; // by their paths
};

/// An item and where it stands. Files outlive it.
struct FiledItem {
    const CalendarFile* file = nullptr;
    const CalendarItem* item = nullptr;
};

/// In the order of the files, and of the items in each.
std::vector<FiledItem> itemsOf(const Calendar& calendar);

} // namespace plenzo
