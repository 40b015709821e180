#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

namespace plenzo {

/// Which file stood at a path, and in which state: equal as long as nobody wrote there.
struct FileStamp {
    bool exists = false;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t changedSeconds = 0;
    std::int64_t changedNanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

FileStamp fileStamp(const struct stat& status);

/// Of the file that the path leads to; one that does not exist when that cannot be told.
FileStamp fileStampAt(const std::string& path);

} // namespace plenzo
