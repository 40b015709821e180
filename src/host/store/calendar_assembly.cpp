#include "host/store/calendar_assembly.h"

#include "host/ical/color_names.h"
#include "host/ical/identifiers.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

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

/// The calendars of one source on the way.
class Assembly {
public:
    explicit Assembly(const std::vector<StoredPath>& paths) : m_mayRepeat(paths.size() > 1) {
        for (const StoredPath& path : paths) {
            for (const StoredFolder& folder : path.folders()) {
                m_mayRepeat = m_mayRepeat || folder.folder.hasLinks;
            }
        }
    }

    void add(const StoredPath& path) {
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

    std::vector<Calendar> take() { return std::move(m_calendars); }

private:
    bool isNew(const std::string& realPath) {
        return !m_mayRepeat || m_known.insert(realPath).second;
    }

    static std::string realPathOf(const StoredFolder& folder, const StoredFile& stored) {
        const fs::path name = fs::path(stored.file->path).filename();
        return stored.realPath.empty() ? (fs::path(folder.folder.realPath) / name).string()
                                       : stored.realPath;
    }

    Files calendarFilesOf(const StoredFolder& folder) {
        Files files;
        files.reserve(folder.files.size());
        for (const StoredFile& stored : folder.files) {
            if (stored.file->isCalendar && (!m_mayRepeat || isNew(realPathOf(folder, stored)))) {
                files.push_back(stored);
            }
        }
        return files;
    }

    void addFolder(const StoredFolder& folder) {
        Files items;
        for (const StoredFile& stored : calendarFilesOf(folder)) {
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

    bool m_mayRepeat;
    std::unordered_set<std::string> m_known;
    std::vector<Calendar> m_calendars;
};

void dress(Calendar& calendar, const CalendarSource& source, bool isOnly) {
    calendar.isReadOnly = calendar.isReadOnly || source.isReadOnly;
    calendar.color = source.color.value_or(calendar.color);
    if (isOnly && !source.title.empty()) {
        calendar.title = source.title;
    }
}

} // namespace

std::vector<Calendar> assembledCalendars(const CalendarSource& source,
                                         const std::vector<StoredPath>& paths) {
    Assembly assembly(paths);
    for (const StoredPath& path : paths) {
        assembly.add(path);
    }
    std::vector<Calendar> calendars = assembly.take();
    for (Calendar& calendar : calendars) {
        dress(calendar, source, calendars.size() == 1);
    }
    return calendars;
}

} // namespace plenzo
