#include "linux/whole_file.h"

#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr mode_t privateFileMode = 0600;
constexpr fs::perms privateFolderPermissions = fs::perms::owner_all;

bool writeAll(int descriptor, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

/// A new file beside the target, so that renaming it never crosses a file system.
bool writeTemporaryFile(std::string& pathTemplate, std::span<const std::byte> bytes) {
    const FileDescriptor file(::mkostemp(pathTemplate.data(), O_CLOEXEC));
    return file.isOpen() && ::fchmod(file.get(), privateFileMode) == 0 &&
           writeAll(file.get(), bytes) && ::fsync(file.get()) == 0;
}

bool exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

/// A link is followed, so that settings kept elsewhere stay there.
fs::path resolved(const std::string& path) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    return error ? fs::path(path) : target;
}

} // namespace

std::optional<std::vector<std::byte>> readWholeFile(const std::string& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::vector<std::byte> bytes(static_cast<std::size_t>(status.st_size));
    std::size_t size = 0;
    while (size < bytes.size()) {
        const auto count = ::read(file.get(), bytes.data() + size, bytes.size() - size);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return std::nullopt;
        }
        size += static_cast<std::size_t>(count);
    }
    return bytes;
}

bool createPrivateFolders(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) {
        return true;
    }
    if (folder.has_parent_path() && folder.parent_path() != folder) {
        createPrivateFolders(folder.parent_path());
    }
    if (fs::create_directory(folder, error)) {
        fs::permissions(folder, privateFolderPermissions, error);
    }
    return fs::is_directory(folder, error);
}

void syncFolder(const fs::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) {
        ::fsync(descriptor.get());
    }
}

bool replaceWholeFile(const std::string& path, std::span<const std::byte> bytes) {
    const fs::path target = resolved(path);
    if (!createPrivateFolders(target.parent_path())) {
        return false;
    }
    std::string temporaryPath = target.string() + ".XXXXXX";
    if (!writeTemporaryFile(temporaryPath, bytes) ||
        std::rename(temporaryPath.c_str(), target.c_str()) != 0) {
        std::remove(temporaryPath.c_str());
        return false;
    }
    syncFolder(target.parent_path());
    return true;
}

bool setDamagedFileAside(const std::string& path) {
    constexpr int mostDamagedFiles = 1000;
    std::string aside = path + ".damaged";
    for (int number = 2; exists(aside) && number <= mostDamagedFiles; ++number) {
        aside = path + ".damaged-" + std::to_string(number);
    }
    return !exists(aside) && std::rename(path.c_str(), aside.c_str()) == 0;
}

} // namespace plenzo
