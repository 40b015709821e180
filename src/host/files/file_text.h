#pragma once

#include "host/files/file_stamp.h"

#include <cstddef>
#include <string>

namespace plenzo {

/// The content of a file, or why there is none.
struct FileText {
    std::string text;
    std::string error; // empty when it was read
    bool isWritable = false;
    FileStamp stamp; // from before it was read
};

inline constexpr std::size_t largestFileBytes = std::size_t{256} << 20;

/// Reads a regular file of at most so many bytes; never waits (for the writer of a pipe, say).
FileText readFileText(const std::string& path, std::size_t mostBytes = largestFileBytes);

/// Whether the user may put another file in its place: writes to it and to its folder, and leaves
/// everybody the access that they have.
bool isWritableFile(const std::string& path, const struct stat& status);

} // namespace plenzo
