#include "linux/files_on_disk.h"

#include "linux/whole_file.h"
#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr double nanosecondsInASecond = 1e9;
constexpr long nanosecondsInAMicrosecond = 1000;

std::optional<struct stat> statusOfRegularFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return status;
}

/// Whole seconds and their fraction are kept apart, since together they have too many digits for
/// one number.
timespec inWholeMicroseconds(Instant date) {
    const double wholeSeconds = std::floor(date.secondsSinceReferenceDate());
    const double fraction = date.secondsSinceReferenceDate() - wholeSeconds;
    const auto microseconds = static_cast<long>(std::ceil(fraction * 1e6));
    constexpr long microsecondsInASecond = 1000000;
    const Instant seconds = Instant(wholeSeconds) + (microseconds == microsecondsInASecond ? 1 : 0);
    return {.tv_sec = static_cast<time_t>(seconds.secondsSince1970()),
            .tv_nsec = microseconds % microsecondsInASecond * nanosecondsInAMicrosecond};
}

bool writeModificationTime(const std::string& path, timespec time) {
    const std::array<timespec, 2> times{timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, time};
    return ::utimensat(AT_FDCWD, path.c_str(), times.data(), 0) == 0;
}

bool isThere(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

} // namespace

std::optional<std::vector<std::byte>> FilesOnDisk::read(const std::string& path) const {
    return readWholeFile(path);
}

bool FilesOnDisk::replace(const std::string& path, std::span<const std::byte> bytes) {
    return replaceWholeFile(path, bytes);
}

std::optional<Instant> FilesOnDisk::modificationDate(const std::string& path) const {
    const auto status = statusOfRegularFile(path);
    if (!status) {
        return std::nullopt;
    }
    const timespec& time = status->st_mtim;
    const Instant wholeSeconds = Instant::since1970(0) + static_cast<double>(time.tv_sec);
    return wholeSeconds + static_cast<double>(time.tv_nsec) / nanosecondsInASecond;
}

bool FilesOnDisk::setModificationDate(const std::string& path, Instant date) {
    const auto before = statusOfRegularFile(path);
    if (!before || !date.isReadable() || !writeModificationTime(path, inWholeMicroseconds(date))) {
        return false;
    }
    // A file system takes a date beyond its own calendar for the last one that it knows.
    constexpr double coarsestFileSystemSeconds = 2;
    const auto kept = modificationDate(path);
    if (kept && std::abs(*kept - date) <= coarsestFileSystemSeconds) {
        return true;
    }
    writeModificationTime(path, before->st_mtim);
    return false;
}

bool FilesOnDisk::move(const std::string& from, const std::string& to) {
    const fs::path newFolder = fs::path(to).parent_path();
    if (!isThere(from) || !createPrivateFolders(newFolder) ||
        std::rename(from.c_str(), to.c_str()) != 0) {
        return false;
    }
    syncFolder(newFolder);
    syncFolder(fs::path(from).parent_path());
    return true;
}

bool FilesOnDisk::remove(const std::string& path) {
    std::error_code error;
    fs::remove_all(path, error);
    if (isThere(path)) {
        return false;
    }
    syncFolder(fs::path(path).parent_path());
    return true;
}

} // namespace plenzo
