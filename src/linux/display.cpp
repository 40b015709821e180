#include "linux/display.h"

#include <xcb/xcb.h>

#include <QFileInfo>
#include <QLibraryInfo>
#include <cstdlib>
#include <string>
#include <string_view>

namespace plenzo {

namespace {

std::string_view environmentText(const char* name) {
    const char* text = std::getenv(name);
    return text != nullptr ? text : "";
}

bool xServerAnswers() {
    if (environmentText("DISPLAY").empty()) {
        return false;
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool waylandIsThere() {
    const std::string_view display = environmentText("WAYLAND_DISPLAY");
    if (display.empty()) {
        return false;
    }
    const bool isPath = display.front() == '/';
    const std::string socket =
        isPath ? std::string(display)
               : std::string(environmentText("XDG_RUNTIME_DIR")) + "/" + std::string(display);
    const QString plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms/";
    return QFileInfo::exists(QString::fromStdString(socket)) &&
           (QFileInfo::exists(plugins + "libqwayland-generic.so") ||
            QFileInfo::exists(plugins + "libqwayland-egl.so"));
}

/// One of the toolkit's own platforms without a server, chosen on purpose.
bool platformNeedsNoServer() {
    const std::string_view platform = environmentText("QT_QPA_PLATFORM");
    return platform == "offscreen" || platform == "minimal" || platform == "vnc";
}

} // namespace

bool displayIsThere() {
    return platformNeedsNoServer() || xServerAnswers() || waylandIsThere();
}

} // namespace plenzo
