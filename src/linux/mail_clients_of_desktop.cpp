#include "linux/mail_clients_of_desktop.h"

#include "linux/cancellable_callback.h"
#include "linux/desktop_programs.h"
#include "linux/running_programs.h"

#include <gio/gdesktopappinfo.h>

#include <string_view>
#include <utility>

namespace plenzo {

namespace {

constexpr std::string_view entryEnding = ".desktop";
constexpr int busLimitMilliseconds = 2000;

struct FreeWords {
    void operator()(gchar** words) const { g_strfreev(words); }
};

/// The word of the entry's command that names the program: "env NAME=value PROGRAM" runs one too.
std::string programOf(GAppInfo* client) {
    const char* command = g_app_info_get_commandline(client);
    gchar** words = nullptr;
    if (command == nullptr || g_shell_parse_argv(command, nullptr, &words, nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<gchar*, FreeWords> owned(words);
    const auto isSetting = [](std::string_view word) {
        return word == "env" || word == "/usr/bin/env" || word.find('=') != std::string_view::npos;
    };
    while (*words != nullptr && isSetting(*words)) {
        ++words;
    }
    const std::unique_ptr<char, Free> path(*words != nullptr ? g_find_program_in_path(*words)
                                                             : nullptr);
    return path ? path.get() : "";
}

std::string entryText(GDesktopAppInfo* entry, const char* key) {
    const std::unique_ptr<char, Free> text(g_desktop_app_info_get_string(entry, key));
    return text ? text.get() : "";
}

/// A sandbox is started by a program that many have in common, but has a control group of its own.
ProgramMarks marksOf(GDesktopAppInfo* client) {
    if (const auto flatpak = entryText(client, "X-Flatpak"); !flatpak.empty()) {
        return {.path = {}, .controlGroup = "app-flatpak-" + flatpak + "-"};
    }
    if (const auto snap = entryText(client, "X-SnapInstanceName"); !snap.empty()) {
        return {.path = {}, .controlGroup = "snap." + snap + "."};
    }
    return {.path = programOf(G_APP_INFO(client)), .controlGroup = {}};
}

Owned<GDesktopAppInfo> clientWithId(const std::string& clientId) {
    return Owned<GDesktopAppInfo>(
        g_desktop_app_info_new((clientId + std::string(entryEnding)).c_str()));
}

} // namespace

/// What works on the thread.
class MailClientsOfDesktop::Desktop {
public:
    static std::optional<MailClient> defaultClient() {
        const Owned<GAppInfo> client(g_app_info_get_default_for_uri_scheme("mailto"));
        if (!client) {
            return std::nullopt;
        }
        const char* entryName = g_app_info_get_id(client.get());
        std::string id = entryName != nullptr ? entryName : "";
        if (id.ends_with(entryEnding)) {
            id.resize(id.size() - entryEnding.size());
        }
        const bool isOfTerminal =
            G_IS_DESKTOP_APP_INFO(client.get()) &&
            g_desktop_app_info_get_boolean(G_DESKTOP_APP_INFO(client.get()), "Terminal") != FALSE;
        return MailClient{
            .id = std::move(id), .isOfTerminal = isOfTerminal, .program = programOf(client.get())};
    }

    bool isRunning(const std::string& clientId) {
        const Owned<GDesktopAppInfo> client = clientWithId(clientId);
        return client && (hasOwner(busNameOf(G_APP_INFO(client.get()))) ||
                          RunningPrograms().isRunning(marksOf(client.get())));
    }

    void launch(const std::string& clientId) {
        const Owned<GDesktopAppInfo> client = clientWithId(clientId);
        if (client) {
            connect();
            g_app_info_launch(G_APP_INFO(client.get()), nullptr, launchContext(std::nullopt).get(),
                              nullptr);
        }
    }

    /// What was launched over the bus has to be on its way.
    void flush() {
        if (m_bus) {
            g_dbus_connection_flush_sync(m_bus.get(), nullptr, nullptr);
        }
    }

private:
    void connect() {
        if (!m_bus) {
            m_bus = sessionBusOfGLib();
        }
    }

    bool hasOwner(const std::string& busName) {
        connect();
        if (busName.empty() || !m_bus) {
            return false;
        }
        GVariant* answer = g_dbus_connection_call_sync(
            m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "NameHasOwner", g_variant_new("(s)", busName.c_str()), G_VARIANT_TYPE("(b)"),
            G_DBUS_CALL_FLAGS_NONE, busLimitMilliseconds, nullptr, nullptr);
        gboolean isOwned = FALSE;
        if (answer != nullptr) {
            g_variant_get(answer, "(b)", &isOwned);
            g_variant_unref(answer);
        }
        return isOwned != FALSE;
    }

    Owned<GDBusConnection> m_bus;
};

MailClientsOfDesktop::MailClientsOfDesktop(MainLoop& loop)
    : m_loop(loop), m_desktop(std::make_unique<Desktop>()) {}

MailClientsOfDesktop::~MailClientsOfDesktop() {
    if (m_thread) {
        m_thread->post([this] { m_desktop->flush(); });
    }
}

Handle MailClientsOfDesktop::findDefault(std::function<void(std::optional<MailClient>)> found) {
    return ask<std::optional<MailClient>>([](Desktop&) { return Desktop::defaultClient(); },
                                          std::move(found));
}

Handle MailClientsOfDesktop::isRunning(const std::string& clientId,
                                       std::function<void(bool)> answered) {
    return ask<bool>([clientId](Desktop& desktop) { return desktop.isRunning(clientId); },
                     std::move(answered));
}

void MailClientsOfDesktop::launch(const std::string& clientId) {
    thread().post([this, clientId] { m_desktop->launch(clientId); });
}

template <typename Answer>
Handle MailClientsOfDesktop::ask(std::function<Answer(Desktop&)> question,
                                 std::function<void(Answer)> answered) {
    auto [callback, handle] = CancellableCallback<Answer>::make(std::move(answered));
    thread().post([this, question = std::move(question), callback = std::move(callback)] {
        m_loop.post([callback, answer = question(*m_desktop)] { callback(answer); });
    });
    return std::move(handle);
}

GLibThread& MailClientsOfDesktop::thread() {
    if (!m_thread) {
        m_thread = std::make_unique<GLibThread>();
    }
    return *m_thread;
}

} // namespace plenzo
