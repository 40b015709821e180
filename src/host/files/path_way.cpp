#include "host/files/path_way.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// As many as the kernel follows.
constexpr std::size_t mostLinks = 40;

} // namespace

PathWay wayOf(const std::string& path) {
    PathWay way;
    fs::path place = "/";
    const fs::path names = fs::path(path).relative_path();
    std::deque<fs::path> rest(names.begin(), names.end());
    while (!rest.empty()) {
        const fs::path next = (place / rest.front()).lexically_normal();
        rest.pop_front();
        std::error_code error;
        const fs::path target = fs::read_symlink(next, error);
        if (error || way.links.size() == mostLinks) {
            place = next;
            continue;
        }
        way.links.push_back(next.string());
        place = target.is_absolute() ? fs::path("/") : next.parent_path();
        const fs::path steps = target.relative_path();
        rest.insert(rest.begin(), steps.begin(), steps.end());
    }
    way.place = (place.has_filename() ? place : place.parent_path()).string();
    return way;
}

} // namespace plenzo
