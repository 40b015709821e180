#pragma once

#include "host/files/file_stamp.h"

#include <sys/stat.h>

#include <cstddef>
#include <optional>
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

/// Of the file that a path leads to.
struct FileStatus {
    struct stat status {};
    bool isLink = false; // the path
};

/// Nothing when there is no such file, or it cannot be told.
std::optional<FileStatus> fileStatusAt(const std::string& path);

/// Says whether the user may put another file in a file's place: may write to it and to its folder,
/// and can leave everybody the access that they have. It remembers the last folder, so it is for
/// one look at files.
class FileRights {
public:
    FileRights();

    bool isWritable(const std::string& path, const FileStatus& found);

private:
    void lookAt(const std::string& folder);

    uid_t m_user = 0;
    std::string m_folder;
    struct stat m_status {};
    bool m_allowsWriting = false; // in the folder
};

/// Reads a regular file of at most so many bytes; never waits (for the writer of a pipe, say).
FileText readFileText(const std::string& path, std::size_t mostBytes = largestFileBytes);
FileText readFileText(const std::string& path, std::size_t mostBytes, FileRights& rights);

} // namespace plenzo
