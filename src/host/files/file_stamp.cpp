#include "host/files/file_stamp.h"

namespace plenzo {

FileStamp fileStamp(const struct stat& status) {
    return {true,           status.st_dev,         status.st_ino,
            status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

FileStamp fileStampAt(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? fileStamp(status) : FileStamp();
}

} // namespace plenzo
