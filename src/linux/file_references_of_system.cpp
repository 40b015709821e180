#include "linux/file_references_of_system.h"

#include "linux/environment.h"
#include "linux/file_reference_data.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <utility>

namespace plenzo {

namespace {

/// The system would take a path for one that ends at its first null byte.
bool isAbsolutePath(const std::string& path) {
    return path.starts_with('/') && path.find('\0') == std::string::npos;
}

std::optional<struct statx> statusAtPath(const std::string& path) {
    struct statx status {};
    if (!isAbsolutePath(path) || ::statx(AT_FDCWD, path.c_str(), AT_STATX_SYNC_AS_STAT,
                                         STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0) {
        return std::nullopt;
    }
    return status;
}

FileIdentity identity(const struct statx& status) {
    FileIdentity identity{.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                          .inode = status.stx_ino,
                          .birth = std::nullopt};
    if ((status.stx_mask & STATX_BTIME) != 0) {
        identity.birth =
            BirthTime{.seconds = status.stx_btime.tv_sec, .nanoseconds = status.stx_btime.tv_nsec};
    }
    return identity;
}

} // namespace

std::optional<std::vector<std::byte>>
FileReferencesOfSystem::referenceToFile(const std::string& path) const {
    const auto status = statusAtPath(path);
    if (!status) {
        return std::nullopt;
    }
    return fileReferenceData({.path = path, .identity = identity(*status)});
}

ResolvedReference FileReferencesOfSystem::resolve(std::span<const std::byte> reference) const {
    auto meant = readFileReference(reference);
    const auto status = meant ? statusAtPath(meant->path) : std::nullopt;
    if (!status) {
        return {};
    }
    if (!isSameFile(meant->identity, identity(*status))) {
        return {.state = ReferenceState::Stale, .path = {}};
    }
    return {.state = ReferenceState::Resolved, .path = std::move(meant->path)};
}

FileKind FileReferencesOfSystem::kindAtPath(const std::string& path) const {
    const auto status = statusAtPath(path);
    if (!status) {
        return FileKind::None;
    }
    return S_ISDIR(status->stx_mode) ? FileKind::Folder : FileKind::File;
}

bool FileReferencesOfSystem::isReadable(const std::string& path) const {
    return isAbsolutePath(path) && ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

bool FileReferencesOfSystem::createFolder(const std::string& path) {
    return isAbsolutePath(path) && ::mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) == 0;
}

std::string FileReferencesOfSystem::expandingTilde(const std::string& path) const {
    const std::string home = environment("HOME");
    const bool isInHome = path == "~" || path.starts_with("~/");
    return isInHome && home.starts_with('/') ? home + path.substr(1) : path;
}

} // namespace plenzo
