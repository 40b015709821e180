#pragma once

#include "linux/main_loop.h"
#include "linux/wire/file_descriptor.h"

#include <functional>
#include <string>

namespace plenzo {

/// Says when the file at a path was replaced, written, made or removed; once for a burst of such
/// events, as replacing a file makes several. It watches the file's folder, and nothing at all when
/// that cannot be watched.
class FileWatch {
public:
    FileWatch(MainLoop& loop, const std::string& path, std::function<void()> changed);

private:
    void readEvents();

    MainLoop& m_loop;
    std::string m_fileName;
    std::function<void()> m_changed;
    FileDescriptor m_notifier;
    Handle m_watch;
    /// Waits for the end of the burst.
    Handle m_burst;
};

} // namespace plenzo
