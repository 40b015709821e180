#include "host/files/file_paths.h"

#include <filesystem>
#include <system_error>

namespace plenzo {

namespace files = std::filesystem;

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const files::path absolute = files::absolute(path, error).lexically_normal();
    return (absolute.has_filename() ? absolute : absolute.parent_path()).string();
}

std::string pathIn(const std::string& folder, std::string_view name) {
    std::string path = folder;
    path.reserve(folder.size() + 1 + name.size());
    if (!path.ends_with('/')) {
        path += '/';
    }
    return path += name;
}

std::string canonicalPath(const std::string& path) {
    std::error_code error;
    const files::path canonical = files::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace plenzo
