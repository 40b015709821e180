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

/// A file that is open for reading, or why it is not (errno).
struct OpenedFile {
    FileDescriptor descriptor;
    FileStatus found = {};
    int error = 0;
};

FileDescriptor opened(const std::string& path, int flags) {
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | flags));
}

OpenedFile openedFile(const std::string& path) {
    OpenedFile file{opened(path, O_NOFOLLOW)};
    if (!file.descriptor.isOpen() && errno == ELOOP) {
        file.found.isLink = true;
        file.descriptor = opened(path, 0);
    }
    if (!file.descriptor.isOpen() || fstat(file.descriptor.get(), &file.found.status) != 0) {
        file.error = errno;
    }
    return file;
}

std::string whyNotReadable(const OpenedFile& file, std::size_t mostBytes) {
    const struct stat& status = file.found.status;
    if (file.error != 0) {
        return std::strerror(file.error);
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

/// That of the file itself.
std::string folderOfFile(const std::string& path, bool isLink) {
    if (isLink) {
        std::error_code error;
        return std::filesystem::weakly_canonical(path, error).parent_path().string();
    }
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

/// In a folder such as /tmp everybody may replace only what is theirs.
bool mayReplaceIn(const struct stat& folder, const struct stat& file, uid_t user) {
    return (folder.st_mode & S_ISVTX) == 0 || user == 0 || user == file.st_uid ||
           user == folder.st_uid;
}

} // namespace

std::optional<FileStatus> fileStatusAt(const std::string& path) {
    FileStatus found;
    bool isThere = lstat(path.c_str(), &found.status) == 0;
    found.isLink = isThere && S_ISLNK(found.status.st_mode);
    isThere = isThere && (!found.isLink || stat(path.c_str(), &found.status) == 0);
    return isThere ? std::optional(found) : std::nullopt;
}

FileText readFileText(const std::string& path, std::size_t mostBytes) {
    FileRights rights;
    return readFileText(path, mostBytes, rights);
}

FileText readFileText(const std::string& path, std::size_t mostBytes, FileRights& rights) {
    FileText result;
    const OpenedFile file = openedFile(path);
    result.error = whyNotReadable(file, mostBytes);
    result.stamp = file.error == 0 ? fileStamp(file.found.status) : FileStamp();
    if (result.error.empty()) {
        result.text.resize(static_cast<std::size_t>(file.found.status.st_size));
        result.error = readAll(file.descriptor, result.text);
        result.isWritable = rights.isWritable(path, file.found);
    }
    return result;
}

FileRights::FileRights() : m_user(geteuid()) {}

bool FileRights::isWritable(const std::string& path, const FileStatus& found) {
    if (!allowsWriting(path, found.status, W_OK) || !canKeepOwner(found.status, m_user)) {
        return false;
    }
    const std::string folder = folderOfFile(path, found.isLink);
    if (folder != m_folder) {
        lookAt(folder);
    }
    return m_allowsWriting && mayReplaceIn(m_status, found.status, m_user);
}

void FileRights::lookAt(const std::string& folder) {
    m_folder = folder;
    m_allowsWriting =
        stat(folder.c_str(), &m_status) == 0 && allowsWriting(folder, m_status, W_OK | X_OK);
}

} // namespace plenzo
