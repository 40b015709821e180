#pragma once

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// Where sounds lie, first of all the agent's own. A folder need not exist.
struct SoundFolders {
    /// The agent's own, the user's and the system's, in the order in which they are searched.
    std::vector<std::string> folders;
    /// Of the Sound Theme Specification, each a folder in those above; searched last.
    std::vector<std::string> themes;
};

/// The agent's own folder, and those of the XDG Base Directory Specification, from the environment;
/// the theme that the desktop's settings name, and those that it inherits.
[[nodiscard]] SoundFolders soundFoldersOfUser(const std::string& resourceFolder);

/// The files of named sounds. A name is never a path: what lies outside of the folders, be it by a
/// symbolic link, is not there. Looks at the disk each time, so a new sound is found at once.
class SoundFiles {
public:
    explicit SoundFiles(SoundFolders folders) : m_folders(std::move(folders)) {}

    /// The canonical path of the sound's regular file. Nothing when there is none, when a theme
    /// disables the sound, or when the name cannot be one.
    [[nodiscard]] std::optional<std::string> pathOf(const std::string& name) const;

private:
    [[nodiscard]] std::optional<std::string> soundInThemes(const std::string& name) const;
    /// Nothing when it is no regular file, or not in one of the folders.
    [[nodiscard]] std::optional<std::string> soundFile(const std::string& path) const;

    SoundFolders m_folders;
};

} // namespace plenzo
