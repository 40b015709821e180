#include "host/configuration/new_item_place.h"

#include "host/files/file_paths.h"
#include "host/ical/identifiers.h"
#include "host/store/calendar_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

NewItemPlace nowhere(std::string why) {
    return {NewItemPlace::Kind::File, {}, std::move(why)};
}

// The mode counts too: to the superuser everything is writable.
bool isWritable(const std::string& path, int access) {
    constexpr mode_t anyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && (status.st_mode & anyWriteBit) != 0 &&
           ::access(path.c_str(), access) == 0;
}

/// Whether files can be made in it; each is made under another name first.
bool canTakeFiles(const fs::path& folder) {
    std::error_code error;
    return fs::is_directory(folder, error) && isWritable(folder.string(), W_OK | X_OK);
}

NewItemPlace folderPlace(const std::string& folder) {
    return canTakeFiles(folder) ? NewItemPlace{NewItemPlace::Kind::Folder, folder, {}}
                                : nowhere("is a folder in which nothing can be written");
}

bool isCalendarName(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    return name.ends_with(".ics") && !name.starts_with('.');
}

/// The file that is written is the one that a link leads to.
NewItemPlace filePlace(const std::string& path) {
    std::error_code error;
    const bool isThere = fs::exists(path, error);
    if (isThere && !fs::is_regular_file(path, error)) {
        return nowhere("is neither a file nor a folder");
    }
    if (isThere && !isWritable(path, W_OK)) {
        return nowhere("is read-only");
    }
    if (!isThere && !isCalendarName(path)) {
        return nowhere("does not exist");
    }
    return canTakeFiles(fs::path(canonicalPath(path)).parent_path())
               ? NewItemPlace{NewItemPlace::Kind::File, path, {}}
               : nowhere("lies in a folder in which nothing can be written");
}

NewItemPlace placeInCalendar(const Calendar& calendar) {
    if (calendar.isReadOnly) {
        return nowhere("is read-only");
    }
    const std::string& file = calendar.files.front()->path;
    return calendar.isFolder ? folderPlace(fs::path(file).parent_path().string()) : filePlace(file);
}

NewItemPlace placeInFolder(const std::string& folder, const std::vector<Calendar>& calendars) {
    const std::vector<const Calendar*> inFolder = calendarsInFolder(folder, calendars);
    if (inFolder.empty()) {
        return folderPlace(folder);
    }
    NewItemPlace place;
    for (const Calendar* calendar : inFolder) {
        place = placeInCalendar(*calendar);
        if (place.error.empty()) {
            return place;
        }
    }
    return inFolder.size() == 1 ? place : nowhere("holds no calendar that can be written");
}

NewItemPlace placeOf(const ConfiguredCalendar& configured, const std::vector<Calendar>& calendars) {
    if (configured.isReadOnly) {
        return nowhere("is read-only");
    }
    std::error_code error;
    return fs::is_directory(configured.path, error) ? placeInFolder(configured.path, calendars)
                                                    : filePlace(configured.path);
}

NewItemPlace firstPlace(const std::vector<ConfiguredCalendar>& configured,
                        const std::vector<Calendar>& calendars) {
    std::error_code error;
    for (const ConfiguredCalendar& each : configured) {
        // What does not exist is made for the default alone.
        NewItemPlace place =
            fs::exists(each.path, error) ? placeOf(each, calendars) : nowhere("does not exist");
        if (place.error.empty()) {
            return place;
        }
    }
    return nowhere(configured.empty() ? "there are no calendars" : "no calendar can be written");
}

} // namespace

std::string NewItemPlace::fileFor(std::string_view uid) const {
    if (kind == Kind::File) {
        return path;
    }
    const std::string name = urlSafe(uid);
    const bool isHidden = name.starts_with('.');
    return (fs::path(path) / ((isHidden ? "_" : "") + name + ".ics")).string();
}

NewItemPlace newItemPlace(const std::vector<ConfiguredCalendar>& configured,
                          const std::vector<Calendar>& calendars) {
    const auto chosen =
        std::find_if(configured.begin(), configured.end(),
                     [](const ConfiguredCalendar& calendar) { return calendar.isDefault; });
    if (chosen == configured.end()) {
        return firstPlace(configured, calendars);
    }
    NewItemPlace place = placeOf(*chosen, calendars);
    if (!place.error.empty()) {
        place.error = "the default calendar \"" + chosen->path + "\" " + place.error;
    }
    return place;
}

std::vector<const Calendar*> calendarsInFolder(const std::string& folder,
                                               const std::vector<Calendar>& calendars) {
    std::vector<const Calendar*> result;
    const fs::path canonical = canonicalPath(folder);
    for (const Calendar& calendar : calendars) {
        if (calendar.files.empty()) {
            continue;
        }
        const fs::path holder =
            canonicalPath(fs::path(calendar.files.front()->path).parent_path().string());
        if (holder == canonical || holder.parent_path() == canonical) {
            result.push_back(&calendar);
        }
    }
    return result;
}

} // namespace plenzo
