#include "host/files/new_file_names.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// A name may have 255 bytes.
constexpr std::size_t longestPart = 200;

std::string prefixFor(const fs::path& path) {
    return "." + path.filename().string().substr(0, longestPart) + ".plenzohost-new-";
}

bool isOfEndedProcess(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix)) {
        return false;
    }
    name.remove_prefix(prefix.size());
    pid_t process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isNumber = error == std::errc() && end == name.data() + name.size() && process > 0;
    return isNumber && kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

std::string pathOfNewFile(const std::string& path) {
    const fs::path whole(path);
    return (whole.parent_path() / (prefixFor(whole) + std::to_string(getpid()))).string();
}

void removeForsakenFiles(const std::string& path) {
    const fs::path whole(path);
    const std::string prefix = prefixFor(whole);
    std::error_code error;
    std::vector<fs::path> forsaken;
    for (fs::directory_iterator entry(whole.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (isOfEndedProcess(entry->path().filename().native(), prefix)) {
            forsaken.push_back(entry->path());
        }
    }
    for (const fs::path& each : forsaken) {
        fs::remove(each, error);
    }
}

} // namespace plenzo
