#include "host/files/file_replacement.h"

#include "host/files/file_paths.h"
#include "host/files/file_text.h"
#include "host/files/new_file_names.h"
#include "host/files/path_way.h"
#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace plenzo {

namespace {

std::string resultText(int result) {
    return result == 0 ? std::string() : std::string(std::strerror(errno));
}

std::string writeAll(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR) {
            return std::strerror(errno);
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return {};
}

} // namespace

std::string FileReplacementOnDisk::realPath(const std::string& path) {
    return wayOf(absolutePath(path)).place; // also where nothing stands yet
}

FoundFile FileReplacementOnDisk::read(const std::string& path) {
    FoundFile found;
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        found.error = errno == ENOENT ? "" : std::strerror(errno);
        return found;
    }
    FileText file = readFileText(path);
    found.stamp = fileStamp(status);
    found.attributes = fileAttributesAt(path, status);
    found.isWritable = file.isWritable;
    found.error = std::move(file.error);
    found.text = std::move(file.text);
    return found;
}

FileStamp FileReplacementOnDisk::stamp(const std::string& path) {
    return fileStampAt(path);
}

std::string FileReplacementOnDisk::pathForNew(const std::string& path) {
    removeForsakenFiles(path);
    return pathOfNewFile(path);
}

std::string FileReplacementOnDisk::writeThrough(const std::string& path, const std::string& text,
                                                const FileAttributes& attributes) {
    unlink(path.c_str()); // what a loss of power left
    const FileDescriptor file(open(
        path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file.isOpen()) {
        return std::strerror(errno);
    }
    std::string error = writeAll(file.get(), text);
    if (!error.empty()) {
        return error;
    }
    error = setFileAttributes(file.get(), attributes);
    return error.empty() ? resultText(fsync(file.get())) : error;
}

std::string FileReplacementOnDisk::moveTo(const std::string& from, const std::string& to,
                                          bool isNew) {
    if (!isNew) {
        return resultText(rename(from.c_str(), to.c_str()));
    }
    const int result = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result == 0 || errno != EINVAL) {
        return resultText(result);
    }
    const int linked = link(from.c_str(), to.c_str()); // a file system without that flag
    return linked == 0 ? resultText(unlink(from.c_str())) : resultText(linked);
}

void FileReplacementOnDisk::remove(const std::string& path) {
    unlink(path.c_str());
}

std::string FileReplacementOnDisk::syncFolder(const std::string& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor.isOpen() ? resultText(fsync(descriptor.get())) : std::strerror(errno);
}

} // namespace plenzo
