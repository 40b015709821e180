#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// When a file came into being, to the nanosecond.
struct BirthTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const BirthTime&) const = default;
};

/// Which file of the machine it is. Not every file system keeps the birth time.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<BirthTime> birth;
};

/// Whether both are the same file. A device may have another number after each start of the
/// machine, so that it only counts where there is no birth time.
[[nodiscard]] bool isSameFile(const FileIdentity& left, const FileIdentity& right);

/// What a file reference says. As data it is a binary property list: a dictionary with "version"
/// 1, "path" (data, since a path need not be UTF-8), "device", "inode" and, where known,
/// "birthSeconds" since 1970 and "birthNanoseconds".
struct FileReference {
    std::string path;
    FileIdentity identity;
};

[[nodiscard]] std::vector<std::byte> fileReferenceData(const FileReference& reference);
/// Nothing when the data is of another kind or version, or lacks one of these.
[[nodiscard]] std::optional<FileReference> readFileReference(std::span<const std::byte> data);

} // namespace plenzo
