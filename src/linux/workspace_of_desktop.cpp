#include "linux/workspace_of_desktop.h"

#include "linux/activation_token.h"
#include "linux/desktop_programs.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <optional>

namespace plenzo {

namespace {

using Token = std::optional<std::string>;

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
    if (scheme.get() == std::string_view("file")) {
        const Owned<GFile> file(g_file_new_for_uri(url.c_str()));
        return Owned<GAppInfo>(g_file_query_default_handler(file.get(), nullptr, nullptr));
    }
    return Owned<GAppInfo>(g_app_info_get_default_for_uri_scheme(scheme.get()));
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
    const Owned<GAppLaunchContext> context = launchContext(token);
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
    /// GLib tells the bus what it starts too.
    void connect() {
        if (!m_bus) {
            m_bus = sessionBusOfGLib();
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

void WorkspaceOfDesktop::openFile(const std::string& path) {
    const std::unique_ptr<char, Free> url(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    if (url) {
        openURL(url.get());
    }
}

void WorkspaceOfDesktop::openURLWithoutActivation(const std::string& url) {
    m_thread.post([this, url] { m_launcher->open(url, std::nullopt); });
}

} // namespace plenzo
