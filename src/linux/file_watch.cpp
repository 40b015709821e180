#include "linux/file_watch.h"

#include <sys/inotify.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

namespace plenzo {

namespace {

constexpr int burstMilliseconds = 100;
constexpr std::uint32_t events =
    IN_CREATE | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR;

/// Whether one of the events is about the file. When the system had to drop some, it may have been.
bool concern(std::string_view bytes, std::string_view fileName) {
    while (bytes.size() >= sizeof(inotify_event)) {
        inotify_event event{};
        std::memcpy(&event, bytes.data(), sizeof event);
        const std::string_view paddedName = bytes.substr(sizeof event, event.len);
        const std::string_view name = paddedName.substr(0, paddedName.find('\0'));
        if (name == fileName || (event.mask & IN_Q_OVERFLOW) != 0) {
            return true;
        }
        bytes.remove_prefix(sizeof event + paddedName.size());
    }
    return false;
}

} // namespace

FileWatch::FileWatch(MainLoop& loop, const std::string& path, std::function<void()> changed)
    : m_loop(loop), m_fileName(std::filesystem::path(path).filename()),
      m_changed(std::move(changed)), m_notifier(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    const std::string folder = std::filesystem::path(path).parent_path();
    if (::inotify_add_watch(m_notifier.get(), folder.c_str(), events) >= 0) {
        m_watch =
            loop.watch(m_notifier.get(), MainLoop::Readiness::Readable, [this] { readEvents(); });
    }
}

void FileWatch::readEvents() {
    std::array<char, 4096> bytes{};
    const auto size = ::read(m_notifier.get(), bytes.data(), bytes.size());
    if (size <= 0 || m_burst ||
        !concern({bytes.data(), static_cast<std::size_t>(size)}, m_fileName)) {
        return;
    }
    m_burst = m_loop.after(burstMilliseconds, [this] {
        m_burst.reset();
        m_changed();
    });
}

} // namespace plenzo
