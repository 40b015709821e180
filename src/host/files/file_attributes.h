#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

struct FileOwner {
    uid_t user = 0;
    gid_t group = 0;
};

/// What programs have noted with a file. Access lists are kept in that way too.
struct ExtendedAttribute {
    std::string name; // "user.xdg.tags"
    std::string value;
};

/// What belongs to a file besides its text.
struct FileAttributes {
    mode_t mode = 0;
    std::optional<FileOwner> owner = {}; // nothing: whoever makes it
    std::vector<ExtendedAttribute> extended = {};
};

FileAttributes fileAttributesAt(const std::string& path, const struct stat& status);

/// Gives them to an open file that nobody else has a right to yet. What the file system does not
/// know, or lets nobody set, is left out; but not where somebody would lose access by it, or get
/// it. Returns why it cannot be done, or an empty text.
std::string setFileAttributes(int descriptor, const FileAttributes& attributes);

/// Whether a file that the user makes in its place can have its owner and group, as far as they
/// matter to those who have access.
bool canKeepOwner(const struct stat& status, uid_t user);

} // namespace plenzo
