#include "host/files/folder_entries.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

namespace plenzo {

namespace {

struct ClosingFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool isA(mode_t type, DIR* folder, const char* name, int flags) {
    struct stat status {};
    return fstatat(dirfd(folder), name, &status, flags) == 0 && (status.st_mode & S_IFMT) == type;
}

FolderEntry entryOf(DIR* folder, const dirent& found) {
    FolderEntry entry{found.d_name, found.d_type == DT_LNK, found.d_type == DT_DIR};
    if (found.d_type == DT_UNKNOWN) {
        entry.isLink = isA(S_IFLNK, folder, found.d_name, AT_SYMLINK_NOFOLLOW);
    }
    if (entry.isLink || found.d_type == DT_UNKNOWN) {
        entry.leadsToFolder = isA(S_IFDIR, folder, found.d_name, 0);
    }
    return entry;
}

} // namespace

// The iterator of the standard library makes a path of every name, which is a twentieth of the time
// that a first load of 50,000 files takes.
std::error_code visitFolder(const std::string& path,
                            const std::function<void(const FolderEntry&)>& visit) {
    const std::unique_ptr<DIR, ClosingFolder> folder(opendir(path.c_str()));
    if (!folder) {
        return {errno, std::generic_category()};
    }
    for (;;) {
        errno = 0;
        const dirent* found = readdir(folder.get());
        if (found == nullptr) {
            return {errno, std::generic_category()};
        }
        const FolderEntry entry = entryOf(folder.get(), *found);
        if (entry.name != "." && entry.name != "..") {
            visit(entry);
        }
    }
}

} // namespace plenzo
