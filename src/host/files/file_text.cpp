#include "host/files/file_text.h"

#include "host/files/file_attributes.h"
#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

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
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) {
        std::error_code error;
        return std::filesystem::weakly_canonical(path, error).parent_path().string();
    }
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

/// In a folder such as /tmp everybody may replace only what is theirs.
bool mayReplaceIn(const struct stat& folder, const struct stat& file) {
    const uid_t user = geteuid();
    return (folder.st_mode & S_ISVTX) == 0 || user == 0 || user == file.st_uid ||
           user == folder.st_uid;
}

} // namespace

FileText readFileText(const std::string& path, std::size_t mostBytes) {
    FileAccess access;
    return readFileText(path, mostBytes, access);
}

FileText readFileText(const std::string& path, std::size_t mostBytes, FileAccess& access) {
    FileText result;
    struct stat status {};
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    result.error = whyNotReadable(file, status, mostBytes);
    result.stamp = file.isOpen() ? fileStamp(status) : FileStamp();
    if (result.error.empty()) {
        result.text.resize(static_cast<std::size_t>(status.st_size));
        result.error = readAll(file, result.text);
        result.isWritable = access.isWritable(path, status);
    }
    return result;
}

bool FileAccess::isWritable(const std::string& path, const struct stat& status) {
    if (!allowsWriting(path, status, W_OK) || !canKeepOwner(status)) {
        return false;
    }
    const std::string folder = folderOfFile(path);
    if (folder != m_folder) {
        lookAt(folder);
    }
    return m_allowsWriting && mayReplaceIn(m_status, status);
}

void FileAccess::lookAt(const std::string& folder) {
    m_folder = folder;
    m_allowsWriting =
        stat(folder.c_str(), &m_status) == 0 && allowsWriting(folder, m_status, W_OK | X_OK);
}

} // namespace plenzo
