#include "host/path_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t watchedEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                        IN_CREATE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;

/// What befalls a watched folder itself, or all watches at once.
constexpr std::uint32_t eventsWithoutName = IN_DELETE_SELF | IN_MOVE_SELF | IN_Q_OVERFLOW;

/// What sync tools say of a folder.
bool describesFolder(std::string_view name) {
    return name == "displayname" || name == "color";
}

bool isCalendarName(std::string_view name) {
    return name.ends_with(".ics") && !name.starts_with('.');
}

} // namespace

PathWatch::PathWatch() : m_notifier(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

void PathWatch::watchFolder(const std::string& folder) {
    inotify_add_watch(m_notifier.get(), folder.c_str(), watchedEvents | IN_ONLYDIR);
}

void PathWatch::watch(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::error_code error;
        const fs::path absolute = fs::absolute(path, error).lexically_normal();
        if (!fs::is_directory(absolute, error)) {
            m_fileNames.insert(absolute.filename().string());
            watchFolder(absolute.parent_path().string());
            continue;
        }
        watchFolder(absolute.string());
        for (const fs::directory_entry& entry : fs::directory_iterator(absolute, error)) {
            if (entry.is_directory(error)) {
                watchFolder(entry.path().string());
            }
        }
    }
}

bool PathWatch::matters(const char* name, unsigned events) const {
    if ((events & eventsWithoutName) != 0U) {
        return true;
    }
    const bool isFolder = (events & IN_ISDIR) != 0U;
    // A new file matters when it is written; a new link, which nobody writes, comes by a move.
    if (!isFolder && (events & IN_CREATE) != 0U) {
        return false;
    }
    return isFolder || isCalendarName(name) || describesFolder(name) || m_fileNames.contains(name);
}

bool PathWatch::readChanges() {
    alignas(inotify_event) std::array<std::byte, 16384> events;
    bool anyMatters = false;
    for (;;) {
        const ssize_t length = read(m_notifier.get(), events.data(), events.size());
        if (length <= 0) {
            return anyMatters;
        }
        for (std::size_t offset = 0; offset < static_cast<std::size_t>(length);) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + offset);
            anyMatters = anyMatters || matters(event->len > 0 ? event->name : "", event->mask);
            offset += sizeof(inotify_event) + event->len;
        }
    }
}

} // namespace plenzo
