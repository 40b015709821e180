#include "linux/sound_files.h"

#include "linux/environment.h"
#include "linux/sound_themes.h"
#include "linux/wire/bus_text.h"
#include "linux/xdg_folders.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestNameBytes = 255;
/// In the order of the Sound Theme Specification.
constexpr const char* endings[] = {".oga", ".ogg", ".wav"};
/// An empty file with which a theme says that there is to be silence.
constexpr const char* disabledEnding = ".disabled";
/// The output profile that every theme has.
constexpr const char* profile = "stereo";

bool isSoundName(const std::string& name) {
    return !name.empty() && name.size() <= longestNameBytes && name != "." && name != ".." &&
           name.find('/') == std::string::npos && isBusText(name);
}

bool isWithin(const fs::path& folder, const fs::path& file) {
    return std::ranges::mismatch(folder, file).in1 == folder.end();
}

std::vector<std::string> dataFoldersOfSystem() {
    const std::string list = environment("XDG_DATA_DIRS");
    std::istringstream paths(list.empty() ? "/usr/local/share:/usr/share" : list);
    std::vector<std::string> folders;
    for (std::string path; std::getline(paths, path, ':');) {
        if (path.starts_with('/')) {
            folders.push_back(path);
        }
    }
    return folders;
}

} // namespace

SoundFolders soundFoldersOfUser(const std::string& resourceFolder) {
    std::vector<std::string> folders{resourceFolder};
    if (auto ofUser = XdgFolders().applicationSupport()) {
        folders.push_back(std::move(*ofUser));
    }
    std::ranges::move(dataFoldersOfSystem(), std::back_inserter(folders));
    for (std::string& folder : folders) {
        folder += "/sounds";
    }
    auto themes = soundThemesFrom(configuredSoundTheme(), folders);
    return {.folders = std::move(folders), .themes = std::move(themes)};
}

std::optional<std::string> SoundFiles::pathOf(const std::string& name) const {
    if (!isSoundName(name)) {
        return std::nullopt;
    }
    for (const std::string& folder : m_folders.folders) {
        for (const char* ending : endings) {
            std::string path = folder;
            if (auto sound = soundFile(path.append("/").append(name).append(ending))) {
                return sound;
            }
        }
    }
    return soundInThemes(name);
}

std::optional<std::string> SoundFiles::soundInThemes(const std::string& name) const {
    for (const std::string& theme : m_folders.themes) {
        for (const std::string& folder : m_folders.folders) {
            const fs::path stem = fs::path(folder) / theme / profile / name;
            if (soundFile(stem.string() + disabledEnding)) {
                return std::nullopt;
            }
            for (const char* ending : endings) {
                if (auto sound = soundFile(stem.string() + ending)) {
                    return sound;
                }
            }
        }
    }
    return std::nullopt;
}

std::optional<std::string> SoundFiles::soundFile(const std::string& path) const {
    std::error_code error;
    fs::path file = fs::canonical(path, error);
    if (error || !fs::is_regular_file(file, error)) {
        return std::nullopt;
    }
    const bool isOurs = std::ranges::any_of(m_folders.folders, [&file](const std::string& folder) {
        std::error_code failure;
        const fs::path root = fs::canonical(folder, failure);
        return !failure && isWithin(root, file);
    });
    return isOurs ? std::optional(file.string()) : std::nullopt;
}

} // namespace plenzo
