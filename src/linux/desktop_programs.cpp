#include "linux/desktop_programs.h"

#include <gio/gdesktopappinfo.h>

#include <string_view>

namespace plenzo {

namespace {

/// The variables by which a started program learns its token, of X and of Wayland.
constexpr const char* tokenVariables[] = {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"};

} // namespace

Owned<GDBusConnection> sessionBusOfGLib() {
    Owned<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    return bus;
}

std::string busNameOf(GAppInfo* program) {
    constexpr std::string_view ending = ".desktop";
    const char* entryName = g_app_info_get_id(program);
    std::string name = entryName != nullptr ? entryName : "";
    if (!G_IS_DESKTOP_APP_INFO(program) || !name.ends_with(ending) ||
        g_desktop_app_info_get_boolean(G_DESKTOP_APP_INFO(program), "DBusActivatable") == FALSE) {
        return {};
    }
    name.resize(name.size() - ending.size());
    const bool isBusName = g_dbus_is_name(name.c_str()) && !g_dbus_is_unique_name(name.c_str());
    return isBusName ? name : std::string();
}

Owned<GAppLaunchContext> launchContext(const std::optional<std::string>& token) {
    Owned<GAppLaunchContext> context(g_app_launch_context_new());
    for (const char* variable : tokenVariables) {
        if (token) {
            g_app_launch_context_setenv(context.get(), variable, token->c_str());
        } else {
            g_app_launch_context_unsetenv(context.get(), variable);
        }
    }
    return context;
}

} // namespace plenzo
