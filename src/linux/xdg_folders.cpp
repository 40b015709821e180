#include "linux/xdg_folders.h"

#include "linux/environment.h"
#include "linux/whole_file.h"

#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

/// An absolute path in the environment, or nothing.
std::optional<std::string> folderFromEnvironment(const char* variable) {
    std::string path = environment(variable);
    return path.starts_with('/') ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<std::string> home() {
    if (auto folder = folderFromEnvironment("HOME")) {
        return folder;
    }
    const passwd* user = ::getpwuid(::getuid());
    if (user == nullptr || user->pw_dir == nullptr || *user->pw_dir != '/') {
        return std::nullopt;
    }
    return user->pw_dir;
}

std::optional<std::string> folder(const char* variable, const char* belowHome) {
    if (auto path = folderFromEnvironment(variable)) {
        return path;
    }
    auto path = home();
    if (path) {
        path->append(belowHome);
    }
    return path;
}

} // namespace

std::optional<std::string> XdgFolders::applicationSupport() const {
    return folder("XDG_DATA_HOME", "/.local/share");
}

std::optional<std::string> XdgFolders::configuration() {
    return folder("XDG_CONFIG_HOME", "/.config");
}

std::string XdgFolders::temporary() const {
    std::error_code error;
    const auto path = std::filesystem::temp_directory_path(error);
    return error ? "/tmp" : path.string();
}

bool XdgFolders::createWithIntermediates(const std::string& path) {
    return createPrivateFolders(path);
}

} // namespace plenzo
