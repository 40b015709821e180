#include "host/store/stored_path.h"

#include "host/files/file_paths.h"
#include "host/store/calendar_file.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

using Files = std::vector<StoredFile>;

bool isBefore(const StoredFile& left, const StoredFile& right) {
    return left.file->path < right.file->path;
}

/// Where the file of that path stands among them, or would.
Files::const_iterator placeOf(const Files& files, const std::string& path) {
    return std::lower_bound(
        files.begin(), files.end(), path,
        [](const StoredFile& file, const std::string& wanted) { return file.file->path < wanted; });
}

StoredFile fileAt(const Files& files, Files::const_iterator place, const std::string& path) {
    return place != files.end() && place->file->path == path ? *place : StoredFile();
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

/// In a folder without links that is plain to see.
void addRealPath(const StoredFolder& folder, StoredFile& file) {
    if (folder.folder.hasLinks && file.realPath.empty()) {
        file.realPath = canonicalPath(file.file->path);
    }
}

} // namespace

StoredPath::StoredPath(const std::string& path, const CalendarAmendments* amendments)
    : m_amendments(amendments), m_path(path), m_absolutePath(absolutePath(path)) {}

std::vector<std::string> StoredPath::takeProblems() {
    return std::exchange(m_problems, {});
}

std::vector<CalendarFilePointer> StoredPath::takeNewFiles() {
    return std::exchange(m_newFiles, {});
}

StoredFile StoredPath::counting(const std::string& path, const StoredFile& known,
                                const CalendarFilePointer& found) {
    CalendarFilePointer file = m_grace.counting(path, known.file, found, m_now);
    if (file && file != known.file) {
        m_problems.insert(m_problems.end(), file->problems.begin(), file->problems.end());
    }
    if (file && !known.file) {
        m_newFiles.push_back(file);
    }
    const bool isThere = file == found;
    return {std::move(file), isThere ? std::string() : known.realPath, known.kind};
}

StoredFile StoredPath::currentFile(const std::string& path, const StoredFile& known) {
    StoredFile file = counting(path, known, currentCalendarFile(path, known.file, m_amendments));
    if (file.realPath.empty()) {
        file.realPath = canonicalPath(path);
    }
    return file;
}

void StoredPath::lookAtEverything(SteadyTime now) {
    m_now = now;
    CalendarPaths paths = calendarPathsOf(m_path);
    lookAtFolders(std::move(paths.folders));
    const bool isFile = !paths.files.empty() && m_folders.empty();
    m_file = isFile ? currentFile(m_path, m_file) : counting(m_path, m_file, nullptr);
    m_grace.forgetEnded(now);
    if (m_grace.isEmpty()) { // else nothing has been missed yet
        m_problems.insert(m_problems.end(), paths.problems.begin(), paths.problems.end());
    }
}

void StoredPath::decideKinds(StoredFolder& folder) const {
    if (m_grace.isGranted()) {
        plenzo::decideKinds(folder);
    } else {
        decideKindsAnew(folder);
    }
}

void StoredPath::lookAtFolders(std::vector<CalendarFolder> found) {
    std::vector<StoredFolder> folders;
    folders.reserve(found.size());
    for (CalendarFolder& folder : found) {
        folders.push_back(storedFolder(std::move(folder)));
    }
    for (StoredFolder& known : m_folders) {
        const bool isThere =
            std::any_of(folders.begin(), folders.end(), [&](const StoredFolder& folder) {
                return folder.absolutePath == known.absolutePath;
            });
        Files kept;
        if (!isThere) {
            keepMissingFiles(known.files, kept);
        }
        if (!kept.empty()) {
            known.files = std::move(kept);
            folders.push_back(std::move(known));
        }
    }
    std::stable_sort(folders.begin(), folders.end(), [](const auto& left, const auto& right) {
        return left.folder.path < right.folder.path;
    });
    m_folders = std::move(folders);
}

StoredFolder StoredPath::storedFolder(CalendarFolder folder) {
    StoredFolder stored{std::move(folder), {}, {}, false};
    stored.absolutePath = absolutePath(stored.folder.path);
    const StoredFolder* known = knownFolder(stored.absolutePath);
    const Files none;
    const Files& knownFiles = known == nullptr ? none : known->files;
    std::vector<WantedFile> wanted;
    std::vector<StoredFile> knownOnes;
    auto place = knownFiles.begin();
    for (std::string& path : stored.folder.files) {
        while (place != knownFiles.end() && place->file->path < path) {
            ++place;
        }
        knownOnes.push_back(fileAt(knownFiles, place, path));
        wanted.push_back({std::move(path), knownOnes.back().file});
    }
    stored.folder.files = {};
    const auto found = currentCalendarFiles(wanted, m_amendments);
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        stored.files.push_back(counting(wanted[index].path, knownOnes[index], found[index]));
        addRealPath(stored, stored.files.back());
    }
    keepMissingFiles(knownFiles, stored.files);
    stored.isCollection = known != nullptr && known->isCollection;
    decideKinds(stored);
    return stored;
}

/// Adds those of the known files that are away and count all the same.
void StoredPath::keepMissingFiles(const Files& known, Files& files) {
    Files missing;
    std::set_difference(known.begin(), known.end(), files.begin(), files.end(),
                        std::back_inserter(missing), isBefore);
    const auto middle = static_cast<std::ptrdiff_t>(files.size());
    for (const StoredFile& file : missing) {
        StoredFile kept = counting(file.file->path, file, nullptr);
        if (kept.file) {
            files.push_back(std::move(kept));
        }
    }
    std::inplace_merge(files.begin(), files.begin() + middle, files.end(), isBefore);
}

const StoredFolder* StoredPath::knownFolder(const std::string& path) const {
    const auto found =
        std::find_if(m_folders.begin(), m_folders.end(),
                     [&](const StoredFolder& folder) { return folder.absolutePath == path; });
    return found == m_folders.end() ? nullptr : &*found;
}

void StoredPath::lookAt(const std::set<std::string>& absolutePaths, SteadyTime now) {
    m_now = now;
    const std::set<std::string> ended = m_grace.ended(now);
    const auto look = [this](const std::string& path) { return lookAtFile(absolutePath(path)); };
    if (!std::all_of(absolutePaths.begin(), absolutePaths.end(), look) ||
        !std::all_of(ended.begin(), ended.end(), look)) {
        lookAtEverything(now);
    }
    m_grace.forgetEnded(now);
}

/// What a link leads to may be any of the files that have changed.
bool StoredPath::mayLeadElsewhere() const {
    return m_file.file ||
           std::any_of(m_folders.begin(), m_folders.end(),
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
    const StoredFile known = fileAt(folder.files, place, path);
    StoredFile file =
        counting(path, known, exists(path) ? readCalendarFile(path, m_amendments) : nullptr);
    if (!known.file && file.file) {
        folder.files.insert(place, std::move(file));
    } else if (known.file && !file.file) {
        folder.files.erase(place);
    } else if (known.file) {
        folder.files[static_cast<std::size_t>(place - folder.files.begin())] = std::move(file);
    }
    decideKinds(folder);
    return true;
}

} // namespace plenzo
