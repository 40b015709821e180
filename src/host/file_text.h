#pragma once

#include <string>

namespace plenzo {

/// The content of a file, or why there is none.
struct FileText {
    std::string text;
    std::string error; // empty when it was read
    bool isWritable = false;
};

/// Reads a regular file of at most 256 MiB; never waits (for the writer of a pipe, say).
FileText readFileText(const std::string& path);

} // namespace plenzo
