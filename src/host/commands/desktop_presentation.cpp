#include "host/commands/desktop_presentation.h"

#include "host/files/file_replacement.h"
#include "host/ical/identifiers.h"

#include <gio/gdesktopappinfo.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ofUserAlone = S_IRUSR | S_IWUSR;

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Unreference>;

Owned<GDesktopAppInfo> programFor(const char* mediaType) {
    Owned<GAppInfo> program(g_app_info_get_default_for_type(mediaType, FALSE));
    return G_IS_DESKTOP_APP_INFO(program.get())
               ? Owned<GDesktopAppInfo>(G_DESKTOP_APP_INFO(program.release()))
               : nullptr;
}

Owned<GAppLaunchContext> launchContext(const std::string& token) {
    Owned<GAppLaunchContext> context(g_app_launch_context_new());
    for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        if (token.empty()) {
            g_app_launch_context_unsetenv(context.get(), variable);
        } else {
            g_app_launch_context_setenv(context.get(), variable, token.c_str());
        }
    }
    return context;
}

/// In the new process: the signals that this program waits for are for itself alone.
void unblockSignals(gpointer /*nothing*/) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Programs that are called on the bus are reached over a connection that would end this program
/// with the bus.
void keepAliveWithoutBus() {
    const Owned<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
}

bool openWith(GDesktopAppInfo* program, const std::string& path, const std::string& token) {
    if (program == nullptr) {
        return false;
    }
    if (g_desktop_app_info_get_boolean(program, "DBusActivatable") != FALSE) {
        keepAliveWithoutBus();
    }
    const std::unique_ptr<char, decltype(&g_free)> uri(
        g_filename_to_uri(path.c_str(), nullptr, nullptr), g_free);
    if (!uri) {
        return false;
    }
    GList uris{uri.get(), nullptr, nullptr};
    return g_desktop_app_info_launch_uris_as_manager(program, &uris, launchContext(token).get(),
                                                     G_SPAWN_SEARCH_PATH, unblockSignals, nullptr,
                                                     nullptr, nullptr, nullptr) != FALSE;
}

} // namespace

bool DesktopPresentation::openCalendarFile(const std::string& path, const std::string& token) {
    return openWith(programFor("text/calendar").get(), path, token);
}

bool DesktopPresentation::openText(const std::string& path, const std::string& token) {
    return openWith(programFor("application/toml").get(), path, token) ||
           openWith(programFor("text/plain").get(), path, token);
}

bool DesktopPresentation::showSummary(const ItemSummary& summary, const std::string& token) {
    const auto browser = programFor("text/html");
    const std::string page = browser ? writePage(summary) : std::string();
    if (page.empty() || !openWith(browser.get(), page, token)) {
        m_notify({summary.title, summaryText(summary)});
    }
    return true;
}

/// The page's path, or nothing when it could not be written.
std::string DesktopPresentation::writePage(const ItemSummary& summary) const {
    std::error_code error;
    if (m_pageFolder.empty()) {
        return {};
    }
    if (fs::create_directories(m_pageFolder, error)) {
        fs::permissions(m_pageFolder, fs::perms::owner_all, error);
    }
    const std::string text = summaryPage(summary);
    const fs::path path = fs::path(m_pageFolder) / (stableHashText(text) + ".html");
    const bool isWritten =
        FileReplacementOnDisk().writeThrough(path.string(), text, {ofUserAlone}).empty();
    return isWritten ? path.string() : std::string();
}

std::string pageFolderOfUser() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && fs::path(runtime).is_absolute()) {
        return (fs::path(runtime) / "plenzohost").string();
    }
    std::error_code error;
    const fs::path shared = fs::temp_directory_path(error);
    return error ? std::string() : (shared / ("plenzohost-" + std::to_string(getuid()))).string();
}

} // namespace plenzo
