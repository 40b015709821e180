#include "host/files/file_attributes.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace plenzo {

namespace {

constexpr mode_t permissionBits = 07777;
constexpr const char* accessList = "system.posix_acl_access";

/// What says something about the text itself, or is lost by writing.
constexpr std::array<std::string_view, 3> ofTheText = {"security.capability", "security.evm",
                                                       "security.ima"};

std::vector<std::string> extendedNamesAt(const std::string& path) {
    const ssize_t size = listxattr(path.c_str(), nullptr, 0);
    std::string all(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const ssize_t read = all.empty() ? 0 : listxattr(path.c_str(), all.data(), all.size());
    all.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin < all.size(); begin += names.back().size() + 1) {
        names.emplace_back(all.c_str() + begin); // each ends with a NUL
    }
    return names;
}

std::optional<std::string> extendedValueAt(const std::string& path, const std::string& name) {
    const ssize_t size = getxattr(path.c_str(), name.c_str(), nullptr, 0);
    std::string value(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const ssize_t read = getxattr(path.c_str(), name.c_str(), value.data(), value.size());
    return read == size && size >= 0 ? std::optional(std::move(value)) : std::nullopt;
}

mode_t rightsOf(mode_t mode, mode_t whose) {
    constexpr mode_t ofEach = 0111; // spreads a digit for each of the three
    return mode & whose & (06 * ofEach);
}

bool needsItsGroup(mode_t mode) {
    return (rightsOf(mode, S_IRWXG) >> 3U) != rightsOf(mode, S_IRWXO);
}

/// Whoever owned it is taken to be in its group.
bool needsItsOwner(mode_t mode) {
    return ((rightsOf(mode, S_IRWXU) >> 3U) & ~rightsOf(mode, S_IRWXG)) != 0;
}

bool isInGroup(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
    const int count = getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(count, 0)));
    return group == getegid() || std::find(groups.begin(), groups.end(), group) != groups.end();
}

// Only the superuser can give a file away, and others only to groups of theirs.
std::string setOwner(int descriptor, const FileOwner& owner, mode_t mode) {
    if (fchown(descriptor, owner.user, owner.group) == 0) {
        return {};
    }
    constexpr auto sameUser = static_cast<uid_t>(-1);
    const bool hasOwner = owner.user == geteuid() || !needsItsOwner(mode);
    const bool hasGroup = fchown(descriptor, sameUser, owner.group) == 0 || !needsItsGroup(mode);
    return hasOwner && hasGroup ? "" : "its owner and group cannot be kept";
}

bool isLeftOut(const std::string& name, int error) {
    constexpr std::array notForUs = {EPERM, EACCES, ENOTSUP, EINVAL};
    return name != accessList &&
           std::find(notForUs.begin(), notForUs.end(), error) != notForUs.end();
}

std::string setExtended(int descriptor, const std::vector<ExtendedAttribute>& extended) {
    fremovexattr(descriptor, accessList); // the folder's, which a new file has got
    for (const auto& [name, value] : extended) {
        const int result = fsetxattr(descriptor, name.c_str(), value.data(), value.size(), 0);
        if (result != 0 && !isLeftOut(name, errno)) {
            return name + ": " + std::strerror(errno);
        }
    }
    return {};
}

} // namespace

FileAttributes fileAttributesAt(const std::string& path, const struct stat& status) {
    FileAttributes attributes{status.st_mode & permissionBits,
                              FileOwner{status.st_uid, status.st_gid}};
    for (const std::string& name : extendedNamesAt(path)) {
        auto value = extendedValueAt(path, name);
        const bool isOfText =
            std::find(ofTheText.begin(), ofTheText.end(), name) != ofTheText.end();
        if (value && !isOfText) {
            attributes.extended.push_back({name, std::move(*value)});
        }
    }
    return attributes;
}

// The mode comes last: whoever gets another owner loses bits of it, and it limits an access list.
std::string setFileAttributes(int descriptor, const FileAttributes& attributes) {
    std::string error;
    if (attributes.owner) {
        error = setOwner(descriptor, *attributes.owner, attributes.mode);
        error = error.empty() ? setExtended(descriptor, attributes.extended) : error;
    }
    if (error.empty() && fchmod(descriptor, attributes.mode) != 0) {
        error = std::strerror(errno);
    }
    return error;
}

bool canKeepOwner(const struct stat& status, uid_t user) {
    const mode_t mode = status.st_mode;
    return user == 0 || ((status.st_uid == user || !needsItsOwner(mode)) &&
                         (!needsItsGroup(mode) || isInGroup(status.st_gid)));
}

} // namespace plenzo
