#pragma once

#include "linux/wire/file_descriptor.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// What has changed on disk.
struct PathChanges {
    /// Anything may have, also beside the paths: folders came or went, or word of changes was lost.
    bool isAnything = false;
    std::set<std::string> paths; // of files, from the root on

    explicit operator bool() const { return isAnything || !paths.empty(); }
    void add(PathChanges more);
};

/// Says which calendar files change, alone or in folders and the folders in those. Only what is
/// finished counts: a file that was written and closed, moved to its place, removed, or made
/// writable or not; never one that is still being written.
class PathWatch {
public:
    PathWatch();

    /// Watches these paths from now on, besides those before. A path that does not exist yet is
    /// noticed when it is made, and so are the folders that it needs. To be called again when
    /// anything may have changed, for the folders that have come; what is read after that has no
    /// gap.
    void watch(const std::vector<std::string>& paths);

    /// Becomes readable when there is something to be read.
    [[nodiscard]] int descriptor() const { return m_notifier.get(); }
    /// Reads what has happened, without waiting.
    PathChanges readChanges();

private:
    enum class Contents { FilesAndFolders, Files, NamesAlone };

    /// What is wanted of a folder that is watched.
    struct Folder {
        std::string path;
        Contents contents = Contents::NamesAlone;
        std::set<std::string, std::less<>> names; // wanted besides
    };

    void watchPath(const std::string& path);
    void watchName(const std::string& path);
    Folder* addFolder(const std::string& path);
    bool addCalendarFolder(const std::string& path, Contents contents);
    void note(int watch, std::string_view name, unsigned events, PathChanges& changes);
    void noteIn(const Folder& folder, std::string_view name, unsigned events,
                PathChanges& changes) const;
    [[nodiscard]] bool isLinkToFolder(const std::string& path) const;

    FileDescriptor m_notifier;
    /// By their watches: several paths can lead to one folder.
    std::map<int, std::vector<Folder>> m_folders;
};

} // namespace plenzo
