#include "linux/sound_themes.h"

#include "linux/desktop_programs.h"
#include "linux/wire/bus_text.h"

#include <gio/gio.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>

namespace plenzo {

namespace {

/// Every theme falls back to it.
constexpr const char* commonTheme = "freedesktop";

/// More are no chain but a mistake.
constexpr std::size_t mostThemes = 32;

template <auto release>
struct Releaser {
    template <typename Object>
    void operator()(Object* object) const {
        release(object);
    }
};

using KeyFile = std::unique_ptr<GKeyFile, Releaser<g_key_file_unref>>;
using Texts = std::unique_ptr<char*, Releaser<g_strfreev>>;
using Text = std::unique_ptr<char, Releaser<g_free>>;

/// A name is one folder's.
bool isThemeName(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos && name != "." && name != ".." &&
           isBusText(name);
}

std::vector<std::string> inherited(const std::string& theme,
                                   const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        const KeyFile index(g_key_file_new());
        const auto path = std::filesystem::path(folder) / theme / "index.theme";
        if (g_key_file_load_from_file(index.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) == 0) {
            continue;
        }
        gsize count = 0;
        g_key_file_set_list_separator(index.get(), ',');
        const Texts names(
            g_key_file_get_string_list(index.get(), "Sound Theme", "Inherits", &count, nullptr));
        return names ? std::vector<std::string>(names.get(), names.get() + count)
                     : std::vector<std::string>();
    }
    return {};
}

void addWithInherited(const std::string& theme, const std::vector<std::string>& folders,
                      std::vector<std::string>& themes) {
    const bool isKnown = std::ranges::find(themes, theme) != themes.end();
    if (isKnown || !isThemeName(theme) || theme == commonTheme || themes.size() >= mostThemes) {
        return;
    }
    themes.push_back(theme);
    for (const std::string& parent : inherited(theme, folders)) {
        addWithInherited(parent, folders, themes);
    }
}

} // namespace

std::vector<std::string> soundThemesFrom(const std::string& theme,
                                         const std::vector<std::string>& folders) {
    std::vector<std::string> themes;
    addWithInherited(theme, folders, themes);
    themes.emplace_back(commonTheme);
    return themes;
}

std::string configuredSoundTheme() {
    constexpr const char* schemaName = "org.gnome.desktop.sound";
    constexpr const char* key = "theme-name";
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    const std::unique_ptr<GSettingsSchema, Releaser<g_settings_schema_unref>> schema(
        source != nullptr ? g_settings_schema_source_lookup(source, schemaName, TRUE) : nullptr);
    if (!schema || g_settings_schema_has_key(schema.get(), key) == 0) {
        return {};
    }
    // The settings' own connection to the bus, which is this one, would end the program with the
    // bus.
    static const Owned<GDBusConnection> bus = sessionBusOfGLib();
    const std::unique_ptr<GSettings, Releaser<g_object_unref>> settings(
        g_settings_new_full(schema.get(), nullptr, nullptr));
    const Text theme(g_settings_get_string(settings.get(), key));
    return theme.get();
}

} // namespace plenzo
