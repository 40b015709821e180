#include "host/store/calendar_assembly.h"

#include "host/ical/color_names.h"
#include "host/ical/identifiers.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

using Files = std::vector<StoredFile>;

Calendar emptyCalendar(const std::string& realPath, const std::string& title,
                       const std::optional<std::uint32_t>& color) {
    Calendar calendar;
    calendar.uid = "cal-" + stableHashText(realPath);
    calendar.title = title;
    calendar.color = color.value_or(colorForName(title));
    return calendar;
}

Calendar calendarOfFile(const StoredFile& stored, const std::string& realPath) {
    const CalendarFilePointer& file = stored.file;
    Calendar calendar = emptyCalendar(
        realPath, file->title.empty() ? fs::path(file->path).stem().string() : file->title,
        file->color);
    calendar.isReadOnly = !file->isWritable;
    calendar.files = {file};
    return calendar;
}

Calendar calendarOfFolder(const CalendarFolder& folder, const Files& files) {
    const std::string name = fs::path(folder.realPath).filename();
    Calendar calendar =
        emptyCalendar(folder.realPath, folder.displayName.empty() ? name : folder.displayName,
                      colorFromText(folder.color));
    calendar.isFolder = true;
    for (const StoredFile& stored : files) {
        calendar.isReadOnly = calendar.isReadOnly || !stored.file->isWritable;
        calendar.files.push_back(stored.file);
    }
    return calendar;
}

std::string realPathOf(const StoredFolder& folder, const StoredFile& stored) {
    const fs::path name = fs::path(stored.file->path).filename();
    return stored.realPath.empty() ? (fs::path(folder.folder.realPath) / name).string()
                                   : stored.realPath;
}

void dress(Calendar& calendar, const CalendarSource& source, bool isOnly) {
    calendar.isReadOnly = calendar.isReadOnly || source.isReadOnly;
    calendar.color = source.color.value_or(calendar.color);
    if (isOnly && !source.title.empty()) {
        calendar.title = source.title;
    }
}

/// Whether a file may lie on several of the paths.
bool mayOverlap(const std::vector<const StoredPath*>& paths) {
    std::unordered_set<std::string> places;
    bool hasLinks = false;
    bool isTwice = false;
    for (const StoredPath* path : paths) {
        for (const StoredFolder& folder : path->folders()) {
            hasLinks = hasLinks || folder.folder.hasLinks;
            isTwice = !places.insert(folder.folder.realPath).second || isTwice;
        }
        isTwice = (path->file().file && !places.insert(path->file().realPath).second) || isTwice;
    }
    return hasLinks || isTwice ||
           std::any_of(paths.begin(), paths.end(), [&](const StoredPath* path) {
               return path->file().file &&
                      places.contains(fs::path(path->file().realPath).parent_path().string());
           });
}

} // namespace

CalendarAssembly::CalendarAssembly(const std::vector<const StoredPath*>& paths)
    : m_mayRepeat(mayOverlap(paths)) {}

std::vector<Calendar> CalendarAssembly::calendarsOf(const CalendarSource& source,
                                                    const std::vector<StoredPath>& paths) {
    m_takenCount = 0;
    for (const StoredPath& path : paths) {
        add(path);
    }
    std::vector<Calendar> calendars = std::exchange(m_calendars, {});
    const bool isOnly = calendars.size() == 1 && m_takenCount == 0;
    for (Calendar& calendar : calendars) {
        dress(calendar, source, isOnly);
    }
    return calendars;
}

void CalendarAssembly::add(const StoredPath& path) {
    const StoredFile& stored = path.file();
    if (stored.file && stored.file->isCalendar && isNew(stored.realPath)) {
        m_calendars.push_back(calendarOfFile(stored, stored.realPath));
    }
    for (const StoredFolder& folder : path.folders()) {
        if (!folder.files.empty()) {
            addFolder(folder);
        }
    }
}

void CalendarAssembly::addFolder(const StoredFolder& folder) {
    Files items;
    const Files files = newFilesOf(folder);
    for (const StoredFile& stored : files) {
        if (stored.kind == StoredFile::Kind::ItemOfFolder) {
            items.push_back(stored);
        } else {
            m_calendars.push_back(calendarOfFile(stored, realPathOf(folder, stored)));
        }
    }
    if (!items.empty() || folder.isCollection) {
        m_calendars.push_back(calendarOfFolder(folder.folder, items));
    }
}

bool CalendarAssembly::isNew(const std::string& realPath) {
    return !m_mayRepeat || m_known.insert(realPath).second;
}

Files CalendarAssembly::newFilesOf(const StoredFolder& folder) {
    Files files;
    files.reserve(folder.files.size());
    for (const StoredFile& stored : folder.files) {
        if (stored.file->isCalendar && (!m_mayRepeat || isNew(realPathOf(folder, stored)))) {
            files.push_back(stored);
        } else if (stored.kind == StoredFile::Kind::OwnCalendar) {
            ++m_takenCount;
        }
    }
    return files;
}

} // namespace plenzo
