#pragma once

#include "linux/bus_service.h"

#include <cstdint>
#include <functional>

namespace plenzo {

/// How the user wants programs to look.
struct DesktopAppearance {
    enum class ColorScheme { NoPreference, Dark, Light };

    ColorScheme colorScheme = ColorScheme::NoPreference;
    bool highContrast = false;

    friend bool operator==(const DesktopAppearance&, const DesktopAppearance&) = default;
};

/// Hears of the desktop's appearance from the service org.freedesktop.portal.Desktop (namespace
/// "org.freedesktop.appearance" of its settings), while it is there.
class DesktopAppearanceWatch {
public:
    /// `changed` is called when the appearance is known and whenever it has become another one.
    DesktopAppearanceWatch(BusOnMainLoop& bus,
                           std::function<void(const DesktopAppearance&)> changed);

private:
    void ask(const char* setting);
    void settingChanged(sdbus::Message& signal);
    void set(const std::string& setting, std::uint32_t value);

    std::function<void(const DesktopAppearance&)> m_changed;
    DesktopAppearance m_appearance;
    BusService m_portal;
};

} // namespace plenzo
