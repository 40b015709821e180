#pragma once

#include <string>
#include <vector>

namespace plenzo {

/// The names of a sound theme and of those that it falls back to, in the order in which the Sound
/// Theme Specification searches them: the theme, what its "index.theme" inherits, each followed by
/// what it inherits in turn, and "freedesktop" as the last. The first "index.theme" in the folders
/// counts; a theme that has none inherits nothing.
[[nodiscard]] std::vector<std::string> soundThemesFrom(const std::string& theme,
                                                       const std::vector<std::string>& folders);

/// The theme of the desktop's settings ("theme-name" of the schema "org.gnome.desktop.sound", which
/// several desktops share). Empty where there is no such setting.
[[nodiscard]] std::string configuredSoundTheme();

} // namespace plenzo
