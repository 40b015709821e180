#pragma once

#include "host/files/folder_entries.h"
#include "linux/wire/file_descriptor.h"

#include <functional>
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
    std::set<std::string> paths;            // of files, from the root on
    std::vector<std::string> problems = {}; // why changes may go unnoticed

    explicit operator bool() const { return isAnything || !paths.empty(); }
    void add(PathChanges more);
};

/// Says which calendar files change, alone or in folders and the folders in those. Only what is
/// finished counts: a file that was written and closed, moved to its place, removed, or made
/// writable or not; never one that is still being written. Links are followed: what becomes of the
/// file that one leads to becomes of the path.
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

    /// Why not everything that was last asked for is watched; empty when it is.
    [[nodiscard]] const std::string& problem() const { return m_problem; }

private:
    enum class Contents { FilesAndFolders, Files, NamesAlone };

    /// What is wanted of a folder that is watched.
    struct Folder {
        std::string path;
        Contents contents = Contents::NamesAlone;
        /// Wanted besides, with the watched paths that they are, or lead to.
        std::map<std::string, std::set<std::string>, std::less<>> names;
        std::set<std::string, std::less<>> links; // on the way to watched paths
    };

    void watchPath(const std::string& path);
    void watchEntries(const std::string& folder, Contents contents);
    void watchEntry(const std::string& folder, const FolderEntry& entry, Contents contents);
    void watchFile(const std::string& path);
    void watchLinks(const std::vector<std::string>& links);
    void watchName(const std::string& place, const std::string& watchedPath);
    Folder* addFolder(const std::string& path);
    bool addCalendarFolder(const std::string& path, Contents contents);
    void note(int watch, std::string_view name, unsigned events, PathChanges& changes);
    void noteIn(const Folder& folder, std::string_view name, unsigned events,
                PathChanges& changes) const;
    void followNewLinks(const PathChanges& changes);
    [[nodiscard]] bool isLinkToFolder(const std::string& path) const;

    FileDescriptor m_notifier;
    std::string m_problem;
    /// By their watches: several paths can lead to one folder.
    std::map<int, std::vector<Folder>> m_folders;
};

} // namespace plenzo
