#pragma once

#include "linux/wire/file_descriptor.h"

#include <set>
#include <string>
#include <vector>

namespace plenzo {

/// Says when something changes in calendar files, or in folders of them and the folders in those.
/// Only what is finished counts: a file that was written and closed, moved to its place, removed,
/// or made writable or not; never one that is still being written.
class PathWatch {
public:
    PathWatch();

    /// Watches these paths from now on, besides those before. A path that does not exist yet is
    /// noticed when it is made, if its folder exists. To be called again after changes, for the
    /// folders that have come.
    void watch(const std::vector<std::string>& paths);

    /// Becomes readable when there is something to be read.
    [[nodiscard]] int descriptor() const { return m_notifier.get(); }
    /// Reads what has happened, without waiting. Whether any of it matters.
    bool readChanges();

private:
    void watchFolder(const std::string& folder);
    [[nodiscard]] bool matters(const char* name, unsigned events) const;

    FileDescriptor m_notifier;
    /// The names of the files that were asked for by themselves.
    std::set<std::string> m_fileNames;
};

} // namespace plenzo
