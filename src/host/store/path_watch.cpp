#include "host/store/path_watch.h"

#include "host/files/file_paths.h"
#include "host/files/path_way.h"
#include "host/store/calendar_folder.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t watchedEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                        IN_CREATE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;

/// What befalls a watched folder itself, or all watches at once.
constexpr std::uint32_t eventsWithoutName =
    IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_Q_OVERFLOW;

/// While a file is written they are the same.
bool hasOtherTimes(const struct stat& status) {
    return status.st_mtim.tv_sec != status.st_ctim.tv_sec ||
           status.st_mtim.tv_nsec != status.st_ctim.tv_nsec;
}

/// Whether the file that has just come is one that nobody has to write any more: it is a link, or
/// another name of a file, or was written before it got this name.
bool hasComeFinished(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return false;
    }
    const bool isOlder = status.st_size > 0 && hasOtherTimes(status);
    return S_ISLNK(status.st_mode) || (S_ISREG(status.st_mode) && (status.st_nlink > 1 || isOlder));
}

bool isOfCalendars(std::string_view name) {
    return isCalendarFileName(name) || isFolderDescription(name);
}

/// Empty where there is just nothing to be watched.
std::string whyUnwatched(int error) {
    switch (error) {
    case EMFILE:
    case ENFILE:
        return "there are too many inotify instances";
    case ENOSPC:
        return "there are too many inotify watches";
    case ENOSYS:
    case ENOMEM:
        return std::strerror(error);
    default:
        return {};
    }
}

} // namespace

void PathChanges::add(PathChanges more) {
    isAnything = isAnything || more.isAnything;
    paths.merge(more.paths);
    problems.insert(problems.end(), more.problems.begin(), more.problems.end());
}

PathWatch::PathWatch() : m_notifier(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!m_notifier.isOpen()) {
        m_problem = whyUnwatched(errno);
    }
}

void PathWatch::watch(const std::vector<std::string>& paths) {
    if (!m_notifier.isOpen()) {
        return;
    }
    m_problem.clear();
    for (const std::string& path : paths) {
        watchPath(absolutePath(path));
    }
}

void PathWatch::watchPath(const std::string& path) {
    if (addCalendarFolder(path, Contents::FilesAndFolders)) {
        watchLinks(wayOf(path).links);
        watchEntries(path, Contents::FilesAndFolders);
    } else {
        watchFile(path);
    }
}

void PathWatch::watchEntries(const std::string& folder, Contents contents) {
    visitFolder(folder, [&](const FolderEntry& entry) { watchEntry(folder, entry, contents); });
}

void PathWatch::watchEntry(const std::string& folder, const FolderEntry& entry, Contents contents) {
    if (entry.leadsToFolder && contents == Contents::FilesAndFolders) {
        const std::string path = pathIn(folder, entry.name);
        if (addCalendarFolder(path, Contents::Files)) {
            watchLinks(entry.isLink ? wayOf(path).links : std::vector<std::string>());
            watchEntries(path, Contents::Files);
        }
    } else if (!entry.leadsToFolder && entry.isLink && isOfCalendars(entry.name)) {
        watchFile(pathIn(folder, entry.name));
    }
}

/// Also one that is not there yet.
void PathWatch::watchFile(const std::string& path) {
    const PathWay way = wayOf(path);
    watchLinks(way.links);
    watchName(way.place, path);
}

void PathWatch::watchLinks(const std::vector<std::string>& links) {
    for (const std::string& link : links) {
        const fs::path path = link;
        Folder* folder = addFolder(path.parent_path().string());
        if (folder != nullptr) {
            folder->links.insert(path.filename().string());
        }
    }
}

/// Watches the nearest folder that there is for the next name on the way to the place.
void PathWatch::watchName(const std::string& place, const std::string& watchedPath) {
    fs::path name = place;
    while (name.has_relative_path()) {
        Folder* folder = addFolder(name.parent_path().string());
        if (folder != nullptr) {
            folder->names[name.filename().string()].insert(watchedPath);
            const bool hasComeMeanwhile = name != place && addFolder(name.string()) != nullptr;
            if (!hasComeMeanwhile) {
                return;
            }
        }
        name = folder != nullptr ? fs::path(place) : name.parent_path();
    }
}

PathWatch::Folder* PathWatch::addFolder(const std::string& path) {
    const int watch = inotify_add_watch(m_notifier.get(), path.c_str(), watchedEvents | IN_ONLYDIR);
    if (watch < 0) {
        const std::string why = whyUnwatched(errno);
        m_problem = why.empty() ? m_problem : why;
        return nullptr;
    }
    std::vector<Folder>& folders = m_folders[watch];
    const auto known = std::find_if(folders.begin(), folders.end(),
                                    [&](const Folder& folder) { return folder.path == path; });
    return known != folders.end()
               ? &*known
               : &folders.emplace_back(Folder{path, Contents::NamesAlone, {}, {}});
}

bool PathWatch::addCalendarFolder(const std::string& path, Contents contents) {
    Folder* folder = addFolder(path);
    if (folder != nullptr) {
        folder->contents = std::min(folder->contents, contents);
    }
    return folder != nullptr;
}

void PathWatch::note(int watch, std::string_view name, unsigned events, PathChanges& changes) {
    changes.isAnything = changes.isAnything || (events & eventsWithoutName) != 0U;
    if ((events & IN_MOVE_SELF) != 0U) {
        inotify_rm_watch(m_notifier.get(), watch); // its path leads elsewhere now
    }
    if ((events & IN_IGNORED) != 0U) {
        m_folders.erase(watch);
    }
    const auto found = m_folders.find(watch);
    if (found != m_folders.end() && !name.empty()) {
        for (const Folder& folder : found->second) {
            noteIn(folder, name, events, changes);
        }
    }
}

void PathWatch::noteIn(const Folder& folder, std::string_view name, unsigned events,
                       PathChanges& changes) const {
    const std::string path = (fs::path(folder.path) / name).string();
    const bool isCalendar = folder.contents != Contents::NamesAlone && isOfCalendars(name);
    const auto wanted = folder.names.find(name);
    const bool isWanted = wanted != folder.names.end();
    const bool mayBeFolder =
        isWanted || (folder.contents == Contents::FilesAndFolders && !name.starts_with('.'));
    const bool isLinkStep = folder.links.contains(name) && (events & IN_ATTRIB) == 0U;
    if (isLinkStep ||
        (mayBeFolder && ((events & IN_ISDIR) != 0U || (!isCalendar && isLinkToFolder(path))))) {
        changes.isAnything = true;
        return;
    }
    const bool isFinished = (events & IN_CREATE) == 0U || hasComeFinished(path);
    if ((events & IN_ISDIR) != 0U || !isFinished) {
        return;
    }
    if (isCalendar) {
        changes.paths.insert(path);
    }
    if (isWanted) {
        changes.paths.insert(wanted->second.begin(), wanted->second.end());
    }
}

/// Or was one.
bool PathWatch::isLinkToFolder(const std::string& path) const {
    std::error_code error;
    return fs::is_directory(path, error) ||
           std::any_of(m_folders.begin(), m_folders.end(), [&](const auto& watched) {
               return std::any_of(watched.second.begin(), watched.second.end(),
                                  [&](const Folder& folder) { return folder.path == path; });
           });
}

void PathWatch::followNewLinks(const PathChanges& changes) {
    std::error_code error;
    for (const std::string& path : changes.paths) {
        if (fs::is_symlink(fs::symlink_status(path, error))) {
            watchFile(path);
        }
    }
}

PathChanges PathWatch::readChanges() {
    alignas(inotify_event) std::array<std::byte, 16384> events;
    PathChanges changes;
    for (;;) {
        const ssize_t length = read(m_notifier.get(), events.data(), events.size());
        if (length <= 0) {
            followNewLinks(changes);
            return changes;
        }
        for (std::size_t offset = 0; offset < static_cast<std::size_t>(length);) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + offset);
            note(event->wd, event->len > 0 ? event->name : "", event->mask, changes);
            offset += sizeof(inotify_event) + event->len;
        }
    }
}

} // namespace plenzo
