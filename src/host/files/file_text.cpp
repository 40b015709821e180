#include "host/files/file_text.h"

#include "host/files/file_attributes.h"
#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace plenzo {

namespace {

std::string whyNotReadable(const FileDescriptor& file, struct stat& status, std::size_t mostBytes) {
    if (!file.isOpen() || fstat(file.get(), &status) != 0) {
        return std::strerror(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return "is no regular file";
    }
    constexpr unsigned mebibyteShift = 20;
    return static_cast<std::size_t>(status.st_size) > mostBytes
               ? "is larger than " + std::to_string(mostBytes >> mebibyteShift) + " MiB"
               : "";
}

std::string readAll(const FileDescriptor& file, std::string& text) {
    std::size_t length = 0;
    while (length < text.size()) {
        const ssize_t count = read(file.get(), text.data() + length, text.size() - length);
        if (count < 0 && errno != EINTR) {
            return std::strerror(errno);
        }
        if (count == 0) {
            break;
        }
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(length);
    return {};
}

// The mode counts too: to the superuser everything is writable.
bool allowsWriting(const std::string& path, const struct stat& status, int access) {
    constexpr mode_t anyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
    return (status.st_mode & anyWriteBit) != 0 && ::access(path.c_str(), access) == 0;
}

/// That of the file itself, where the path is a link.
std::string folderOfFile(const std::string& path) {
    std::error_code error;
    const bool isLink = fs::is_symlink(fs::symlink_status(path, error));
    const fs::path real = isLink ? fs::weakly_canonical(path, error) : fs::path(path);
    return real.has_parent_path() ? real.parent_path().string() : ".";
}

/// In a folder such as /tmp everybody may replace only what is theirs.
bool isReplaceable(const struct stat& file, const std::string& folderPath) {
    struct stat folder {};
    if (stat(folderPath.c_str(), &folder) != 0 || !allowsWriting(folderPath, folder, W_OK | X_OK)) {
        return false;
    }
    const uid_t user = geteuid();
    return (folder.st_mode & S_ISVTX) == 0 || user == 0 || user == file.st_uid ||
           user == folder.st_uid;
}

} // namespace

FileText readFileText(const std::string& path, std::size_t mostBytes) {
    FileText result;
    struct stat status {};
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    result.error = whyNotReadable(file, status, mostBytes);
    result.stamp = file.isOpen() ? fileStamp(status) : FileStamp();
    if (result.error.empty()) {
        result.text.resize(static_cast<std::size_t>(status.st_size));
        result.error = readAll(file, result.text);
        result.isWritable = isWritableFile(path, status);
    }
    return result;
}

bool isWritableFile(const std::string& path, const struct stat& status) {
    return allowsWriting(path, status, W_OK) && canKeepOwner(status) &&
           isReplaceable(status, folderOfFile(path));
}

} // namespace plenzo
