#include "host/store/calendar_folder.h"

#include "host/files/file_paths.h"
#include "host/files/file_text.h"
#include "host/files/folder_entries.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace files = std::filesystem;

constexpr const char* displayNameFile = "displayname";
constexpr const char* colorFile = "color";

/// The first line of a small file beside the calendars, or empty.
std::string metadata(const files::path& folder, const char* name) {
    std::error_code error;
    const files::path path = folder / name;
    if (!files::is_regular_file(path, error)) {
        return {};
    }
    const std::string text = readFileText(path.string()).text;
    return text.substr(0, text.find_first_of("\r\n"));
}

/// The folder with the calendar files and, beside it, the folders that are in it.
struct ListedFolder {
    CalendarFolder folder;
    std::vector<std::string> inner;
};

void take(const FolderEntry& entry, ListedFolder& listed) {
    if (entry.name.starts_with('.') || (!entry.leadsToFolder && !isCalendarFileName(entry.name))) {
        return;
    }
    CalendarFolder& folder = listed.folder;
    folder.hasLinks = folder.hasLinks || entry.isLink;
    (entry.leadsToFolder ? listed.inner : folder.files).push_back(pathIn(folder.path, entry.name));
}

ListedFolder listedFolder(const files::path& path, std::vector<std::string>& problems) {
    ListedFolder listed;
    CalendarFolder& folder = listed.folder;
    folder.path = path.string();
    folder.realPath = canonicalPath(folder.path);
    folder.displayName = metadata(path, displayNameFile);
    folder.color = metadata(path, colorFile);
    const std::error_code error =
        visitFolder(folder.path, [&](const FolderEntry& entry) { take(entry, listed); });
    if (error) {
        problems.push_back(folder.path + ": " + error.message());
    }
    std::sort(folder.files.begin(), folder.files.end());
    std::sort(listed.inner.begin(), listed.inner.end());
    return listed;
}

bool isEmpty(const CalendarFolder& folder) {
    return folder.files.empty();
}

} // namespace

CalendarPaths calendarPathsOf(const std::string& path) {
    CalendarPaths paths;
    std::error_code error;
    if (!files::is_directory(path, error)) {
        paths.files.push_back(path);
        return paths;
    }
    ListedFolder outer = listedFolder(path, paths.problems);
    paths.folders.push_back(std::move(outer.folder));
    for (const std::string& inner : outer.inner) {
        paths.folders.push_back(listedFolder(inner, paths.problems).folder);
    }
    const bool holdsNone = std::all_of(paths.folders.begin(), paths.folders.end(), isEmpty);
    if (holdsNone && paths.problems.empty()) {
        paths.problems.push_back(path + ": holds no .ics file");
    }
    return paths;
}

bool isCalendarFileName(std::string_view name) {
    constexpr std::string_view extension = ".ics";
    return name.size() > extension.size() && !name.starts_with('.') &&
           std::equal(extension.begin(), extension.end(), name.end() - extension.size(),
                      [](char wanted, char found) {
                          return wanted == std::tolower(static_cast<unsigned char>(found));
                      });
}

bool isFolderDescription(std::string_view name) {
    return name == displayNameFile || name == colorFile;
}

} // namespace plenzo
