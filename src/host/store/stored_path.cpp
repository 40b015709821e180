#include "host/store/stored_path.h"

#include "host/files/file_paths.h"
#include "host/store/calendar_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

using Files = std::vector<CalendarFilePointer>;

/// Where the file of that path stands among them, or would.
Files::const_iterator placeOf(const Files& files, const std::string& path) {
    return std::lower_bound(files.begin(), files.end(), path,
                            [](const CalendarFilePointer& file, const std::string& wanted) {
                                return file->path < wanted;
                            });
}

CalendarFilePointer fileAt(const Files& files, Files::const_iterator place,
                           const std::string& path) {
    return place != files.end() && (*place)->path == path ? *place : nullptr;
}

/// Of one that is a link it has to be found out which file it leads to.
bool isLink(const std::string& path) {
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(path, error));
}

bool exists(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

} // namespace

StoredPath::StoredPath(const std::string& path, const CalendarAmendments* amendments)
    : m_amendments(amendments), m_path(path), m_absolutePath(absolutePath(path)) {}

std::vector<std::string> StoredPath::takeProblems() {
    return std::exchange(m_problems, {});
}

CalendarFilePointer StoredPath::currentFile(const std::string& path,
                                            const CalendarFilePointer& known) {
    CalendarFilePointer file = currentCalendarFile(path, known, m_amendments);
    noteProblems(file, known);
    return file;
}

void StoredPath::noteProblems(const CalendarFilePointer& file, const CalendarFilePointer& known) {
    if (file != known) {
        m_problems.insert(m_problems.end(), file->problems.begin(), file->problems.end());
    }
}

void StoredPath::lookAtEverything() {
    CalendarPaths paths = calendarPathsOf(m_path);
    m_problems.insert(m_problems.end(), paths.problems.begin(), paths.problems.end());
    m_file = paths.files.empty() ? nullptr : currentFile(m_path, m_file);
    std::vector<StoredFolder> folders;
    for (CalendarFolder& folder : paths.folders) {
        folders.push_back(storedFolder(std::move(folder)));
    }
    m_folders = std::move(folders);
}

StoredFolder StoredPath::storedFolder(CalendarFolder folder) {
    StoredFolder stored{std::move(folder), {}, {}};
    stored.absolutePath = absolutePath(stored.folder.path);
    const StoredFolder* known = knownFolder(stored.absolutePath);
    const Files none;
    const Files& knownFiles = known == nullptr ? none : known->files;
    auto place = knownFiles.begin();
    std::vector<WantedFile> wanted;
    for (std::string& path : stored.folder.files) {
        while (place != knownFiles.end() && (*place)->path < path) {
            ++place;
        }
        CalendarFilePointer file = fileAt(knownFiles, place, path);
        wanted.push_back({std::move(path), std::move(file)});
    }
    stored.folder.files = {};
    stored.files = currentCalendarFiles(wanted, m_amendments);
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        noteProblems(stored.files[index], wanted[index].known);
    }
    return stored;
}

const StoredFolder* StoredPath::knownFolder(const std::string& path) const {
    const auto found =
        std::find_if(m_folders.begin(), m_folders.end(),
                     [&](const StoredFolder& folder) { return folder.absolutePath == path; });
    return found == m_folders.end() ? nullptr : &*found;
}

void StoredPath::lookAt(const std::set<std::string>& absolutePaths) {
    const bool isAll = std::all_of(absolutePaths.begin(), absolutePaths.end(),
                                   [this](const std::string& path) { return lookAtFile(path); });
    if (!isAll) {
        lookAtEverything();
    }
}

/// What a link leads to may be any of the files that have changed.
bool StoredPath::mayLeadElsewhere() const {
    return m_file || std::any_of(m_folders.begin(), m_folders.end(),
                                 [](const StoredFolder& folder) { return folder.folder.hasLinks; });
}

/// False when the file concerns others too.
bool StoredPath::lookAtFile(const std::string& absolutePath) {
    if (absolutePath == m_absolutePath || mayLeadElsewhere()) {
        return false;
    }
    const fs::path parts(absolutePath);
    const std::string name = parts.filename().string();
    const std::string parent = parts.parent_path().string();
    for (StoredFolder& folder : m_folders) {
        const bool isHere = folder.absolutePath == parent || folder.folder.realPath == parent;
        if (isHere && isFolderDescription(name)) {
            return false;
        }
        if (isHere && isCalendarFileName(name)) {
            return lookAtFileIn(folder, name);
        }
    }
    return true;
}

bool StoredPath::lookAtFileIn(StoredFolder& folder, const std::string& name) {
    const std::string path = (fs::path(folder.folder.path) / name).string();
    if (folder.files.size() < 2 || isLink(path)) { // the first and the last one concern the folder
        return false;
    }
    const auto place = placeOf(folder.files, path);
    const bool isKnown = fileAt(folder.files, place, path) != nullptr;
    if (!exists(path)) {
        folder.files.erase(place, place + (isKnown ? 1 : 0));
    } else if (isKnown) {
        const auto index = static_cast<std::size_t>(place - folder.files.begin());
        folder.files[index] = currentFile(path, nullptr);
    } else {
        folder.files.insert(place, currentFile(path, nullptr));
    }
    return true;
}

} // namespace plenzo
