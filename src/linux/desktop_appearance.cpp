#include "linux/desktop_appearance.h"

#include <sdbus-c++/sdbus-c++.h>

#include <string>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* colorSchemeSetting = "color-scheme";
constexpr const char* contrastSetting = "contrast";

/// Older portals wrap what they are asked for once more.
std::uint32_t number(sdbus::Variant value) {
    while (value.containsValueOfType<sdbus::Variant>()) {
        value = value.get<sdbus::Variant>();
    }
    return value.containsValueOfType<std::uint32_t>() ? value.get<std::uint32_t>() : 0;
}

DesktopAppearance::ColorScheme colorScheme(std::uint32_t value) {
    switch (value) {
    case 1:
        return DesktopAppearance::ColorScheme::Dark;
    case 2:
        return DesktopAppearance::ColorScheme::Light;
    default:
        return DesktopAppearance::ColorScheme::NoPreference;
    }
}

} // namespace

DesktopAppearanceWatch::DesktopAppearanceWatch(
    BusOnMainLoop& bus, std::function<void(const DesktopAppearance&)> changed)
    : m_changed(std::move(changed)), m_portal(
                                         bus, portalName,
                                         [this] {
                                             ask(colorSchemeSetting);
                                             ask(contrastSetting);
                                         },
                                         [] {}) {
    m_portal.onSignal(settingsInterface, "SettingChanged",
                      [this](sdbus::Message& signal) { settingChanged(signal); });
}

void DesktopAppearanceWatch::ask(const char* setting) {
    const auto replied = [this, setting = std::string(setting)](sdbus::MethodReply* reply) {
        if (reply != nullptr) {
            sdbus::Variant value;
            *reply >> value;
            set(setting, number(value));
        }
    };
    m_portal.call({.path = portalPath, .interface = settingsInterface, .name = "Read"}, replied,
                  std::string(appearance), std::string(setting));
}

void DesktopAppearanceWatch::settingChanged(sdbus::Message& signal) {
    std::string space;
    std::string setting;
    sdbus::Variant value;
    signal >> space >> setting >> value;
    if (space == appearance) {
        set(setting, number(value));
    }
}

void DesktopAppearanceWatch::set(const std::string& setting, std::uint32_t value) {
    DesktopAppearance appearanceNow = m_appearance;
    if (setting == colorSchemeSetting) {
        appearanceNow.colorScheme = colorScheme(value);
    } else if (setting == contrastSetting) {
        appearanceNow.highContrast = value == 1;
    }
    if (!(appearanceNow == m_appearance)) {
        m_appearance = appearanceNow;
        m_changed(m_appearance);
    }
}

} // namespace plenzo
