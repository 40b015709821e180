#include "host/store/path_watch.h"

#include "host/files/file_paths.h"
#include "host/store/calendar_folder.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
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

bool isLink(const std::string& path) {
    std::error_code error;
    return fs::is_symlink(fs::symlink_status(path, error));
}

} // namespace

void PathChanges::add(PathChanges more) {
    isAnything = isAnything || more.isAnything;
    paths.merge(more.paths);
}

PathWatch::PathWatch() : m_notifier(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

void PathWatch::watch(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        watchPath(absolutePath(path));
    }
}

void PathWatch::watchPath(const std::string& path) {
    if (!addCalendarFolder(path, Contents::FilesAndFolders)) {
        watchName(path);
        return;
    }
    std::error_code error;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code none;
        if (entry->is_directory(none)) {
            addCalendarFolder(entry->path().string(), Contents::Files);
        }
    }
}

/// Watches the nearest folder that there is for the next name on the way to the path.
void PathWatch::watchName(const std::string& path) {
    fs::path name = path;
    while (name.has_relative_path()) {
        Folder* folder = addFolder(name.parent_path().string());
        if (folder != nullptr) {
            folder->names.insert(name.filename().string());
            const bool hasComeMeanwhile = name != path && addFolder(name.string()) != nullptr;
            if (!hasComeMeanwhile) {
                return;
            }
        }
        name = folder != nullptr ? fs::path(path) : name.parent_path();
    }
}

PathWatch::Folder* PathWatch::addFolder(const std::string& path) {
    const int watch = inotify_add_watch(m_notifier.get(), path.c_str(), watchedEvents | IN_ONLYDIR);
    if (watch < 0) {
        return nullptr;
    }
    std::vector<Folder>& folders = m_folders[watch];
    const auto known = std::find_if(folders.begin(), folders.end(),
                                    [&](const Folder& folder) { return folder.path == path; });
    return known != folders.end() ? &*known
                                  : &folders.emplace_back(Folder{path, Contents::NamesAlone, {}});
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
    const bool isCalendar = folder.contents != Contents::NamesAlone &&
                            (isCalendarFileName(name) || isFolderDescription(name));
    const bool isWanted = folder.names.contains(name);
    const bool mayBeFolder =
        isWanted || (folder.contents == Contents::FilesAndFolders && !name.starts_with('.'));
    if (mayBeFolder && ((events & IN_ISDIR) != 0U || (!isCalendar && isLinkToFolder(path)))) {
        changes.isAnything = true;
        return;
    }
    // A new file matters when it is written, and nobody writes to a new link.
    const bool isFinished = (events & IN_CREATE) == 0U || isLink(path);
    if ((isWanted || isCalendar) && (events & IN_ISDIR) == 0U && isFinished) {
        changes.paths.insert(path);
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

PathChanges PathWatch::readChanges() {
    alignas(inotify_event) std::array<std::byte, 16384> events;
    PathChanges changes;
    for (;;) {
        const ssize_t length = read(m_notifier.get(), events.data(), events.size());
        if (length <= 0) {
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
