#include "linux/workspace_of_desktop.h"

#include "linux/activation_token.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <optional>

namespace plenzo {

namespace {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unreference>;

struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};

using Token = std::optional<std::string>;

/// The variables by which a started program learns its token, of X and of Wayland.
constexpr const char* tokenVariables[] = {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"};
/// The same for a program that is called on the bus.
constexpr const char* tokenEntries[] = {"desktop-startup-id", "activation-token"};

/// GLib takes spaces, and ends at a zero.
bool isValid(const std::string& url) {
    return std::ranges::all_of(url, [](char c) { return c > ' ' && c < '\x7F'; }) &&
           g_uri_is_valid(url.c_str(), G_URI_FLAGS_ENCODED, nullptr);
}

Owned<GAppInfo> defaultProgramFor(const std::string& url) {
    if (!isValid(url)) {
        return nullptr;
    }
    const std::unique_ptr<char, Free> scheme(g_uri_parse_scheme(url.c_str()));
    return Owned<GAppInfo>(g_app_info_get_default_for_uri_scheme(scheme.get()));
}

/// The bus name of a program whose desktop entry says that it can be called; otherwise empty.
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

/// As the Desktop Entry Specification makes it of the name.
std::string objectPathOf(const std::string& busName) {
    std::string path = "/" + busName;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

GVariant* openArguments(const std::string& url, const Token& token) {
    GVariantBuilder platformData;
    g_variant_builder_init(&platformData, G_VARIANT_TYPE_VARDICT);
    for (const char* entry : tokenEntries) {
        if (token) {
            g_variant_builder_add(&platformData, "{sv}", entry,
                                  g_variant_new_string(token->c_str()));
        }
    }
    const char* urls[] = {url.c_str(), nullptr};
    return g_variant_new("(^asa{sv})", urls, &platformData);
}

void start(GAppInfo* program, const std::string& url, const Token& token) {
    const Owned<GAppLaunchContext> context(g_app_launch_context_new());
    for (const char* variable : tokenVariables) {
        if (token) {
            g_app_launch_context_setenv(context.get(), variable, token->c_str());
        } else {
            g_app_launch_context_unsetenv(context.get(), variable);
        }
    }
    std::string argument = url;
    GList urls{.data = argument.data(), .next = nullptr, .prev = nullptr};
    g_app_info_launch_uris(program, &urls, context.get(), nullptr);
}

} // namespace

/// What works on the thread.
class WorkspaceOfDesktop::Launcher {
public:
    void open(const std::string& url, const Token& token) {
        const Owned<GAppInfo> program = defaultProgramFor(url);
        if (!program) {
            return;
        }
        connect();
        const std::string busName = busNameOf(program.get());
        if (busName.empty() || !m_bus) {
            start(program.get(), url, token);
            return;
        }
        g_dbus_connection_call(m_bus.get(), busName.c_str(), objectPathOf(busName).c_str(),
                               "org.freedesktop.Application", "Open", openArguments(url, token),
                               nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }

    /// The bus forgets a call for a program that it still starts when the caller leaves, so the
    /// connection is kept; but a call of the last moment has to be on its way.
    void flush() {
        if (m_bus) {
            g_dbus_connection_flush_sync(m_bus.get(), nullptr, nullptr);
        }
    }

private:
    /// GLib tells the bus what it starts too. Left to itself it would connect each time, and end
    /// the whole program with the bus.
    void connect() {
        if (!m_bus) {
            m_bus.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        }
        if (m_bus) {
            g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE);
        }
    }

    Owned<GDBusConnection> m_bus;
};

WorkspaceOfDesktop::WorkspaceOfDesktop() : m_launcher(std::make_unique<Launcher>()) {}

WorkspaceOfDesktop::~WorkspaceOfDesktop() {
    m_thread.post([this] { m_launcher->flush(); });
}

void WorkspaceOfDesktop::openURL(const std::string& url) {
    m_thread.post([this, url, token = newActivationToken()] { m_launcher->open(url, token); });
}

void WorkspaceOfDesktop::openURLWithoutActivation(const std::string& url) {
    m_thread.post([this, url] { m_launcher->open(url, std::nullopt); });
}

} // namespace plenzo
