#include "host/calendar_folder.h"

#include "host/file_text.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace files = std::filesystem;

bool isHidden(const files::path& path) {
    return path.filename().string().starts_with('.');
}

bool isCalendarFile(const files::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension == ".ics" && !isHidden(path);
}

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

std::vector<files::path> entriesOf(const files::path& folder, CalendarPaths& paths) {
    std::vector<files::path> entries;
    std::error_code error;
    files::directory_iterator entry(folder, error);
    for (; !error && entry != files::directory_iterator(); entry.increment(error)) {
        entries.push_back(entry->path());
    }
    if (error) {
        paths.problems.push_back(folder.string() + ": " + error.message());
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

enum class Descent { IntoFolders, None };

void addFolder(const files::path& path, Descent descent, CalendarPaths& paths) {
    std::error_code error;
    std::vector<files::path> inner;
    CalendarFolder folder{
        path.string(), {}, metadata(path, "displayname"), metadata(path, "color")};
    for (const files::path& entry : entriesOf(path, paths)) {
        if (files::is_directory(entry, error)) {
            inner.push_back(entry);
        } else if (isCalendarFile(entry)) {
            folder.files.push_back(entry.string());
        }
    }
    if (!folder.files.empty()) {
        paths.folders.push_back(std::move(folder));
    }
    for (const files::path& entry : inner) {
        if (descent == Descent::IntoFolders && !isHidden(entry)) {
            addFolder(entry, Descent::None, paths);
        }
    }
}

} // namespace

CalendarPaths calendarPathsOf(const std::string& path) {
    CalendarPaths paths;
    std::error_code error;
    if (!files::is_directory(path, error)) {
        paths.files.push_back(path);
        return paths;
    }
    addFolder(path, Descent::IntoFolders, paths);
    if (paths.folders.empty() && paths.problems.empty()) {
        paths.problems.push_back(path + ": holds no .ics file");
    }
    return paths;
}

std::string canonicalPath(const std::string& path) {
    std::error_code error;
    const files::path canonical = files::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace plenzo
