#include "app/agent.h"

#include "app/version.h"
#include "core/plenzo_alarm.h"
#include "linux/absolute_timers.h"
#include "linux/agent_address.h"
#include "linux/bus_on_main_loop.h"
#include "linux/bus_thread.h"
#include "linux/canberra_player.h"
#include "linux/delays_on_main_loop.h"
#include "linux/desktop_appearance.h"
#include "linux/disposal_on_bus_thread.h"
#include "linux/distributed_notifications_on_bus.h"
#include "linux/file_references_of_system.h"
#include "linux/file_user_defaults.h"
#include "linux/files_on_disk.h"
#include "linux/freedesktop_notifications.h"
#include "linux/host_link_on_bus.h"
#include "linux/inspector_on_bus.h"
#include "linux/mail_clients_of_desktop.h"
#include "linux/main_string_table.h"
#include "linux/named_sounds.h"
#include "linux/power_notices_of_system.h"
#include "linux/regional_settings_of_system.h"
#include "linux/script_runner_of_system.h"
#include "linux/system_clock.h"
#include "linux/system_settings_watch.h"
#include "linux/termination_signals.h"
#include "linux/window_hints.h"
#include "linux/workspace_of_desktop.h"
#include "linux/xdg_folders.h"
#include "support/bookmark_utilities.h"
#include "support/mail_utilities.h"
#include "ui/alarm/alarm_window.h"
#include "ui/controls/open_panel_of_desktop.h"
#include "ui/controls/palettes.h"

#include <sdbus-c++/sdbus-c++.h>

#include <QApplication>
#include <QSessionManager>
#include <QStyle>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* folderName = "PlenzoAlarm";
constexpr const char* programName = "plenzoalarm";

std::string preferencesPath(const XdgFolders& folders) {
    const std::string parent = XdgFolders::configuration().value_or(folders.temporary());
    return parent + "/" + folderName + "/Preferences.plist";
}

MailScripts::Folders mailScriptFolders(const XdgFolders& folders) {
    const auto ofUser = folders.applicationSupport();
    return {.ofUser = ofUser ? *ofUser + "/" + folderName + "/Scripts" : std::string(),
            .ofAgent = resourceFolder() + "/scripts"};
}

/// The two connections to the session's bus, or a reason why there are none.
struct Connections {
    /// Owns the agent's name; served by a thread of its own.
    std::unique_ptr<sdbus::IConnection> link;
    /// For calls to the desktop's services; served by the main loop.
    std::unique_ptr<sdbus::IConnection> desktop;
    std::string failure;
};

Connections connect() {
    Connections connections;
    try {
        connections.link = sdbus::createSessionBusConnection();
        connections.desktop = sdbus::createSessionBusConnection();
    } catch (const sdbus::Error& error) {
        connections.failure = "no session bus: " + error.getMessage();
        return connections;
    }
    try {
        connections.link->requestName(agentaddress::busName);
    } catch (const sdbus::Error&) {
        connections.failure = "already running for this user";
    }
    return connections;
}

/// Null when there is no system bus, without which the agent runs all the same.
std::unique_ptr<BusOnMainLoop> connectToSystemBus(MainLoop& loop, std::function<void()> lost) {
    try {
        return std::make_unique<BusOnMainLoop>(loop, sdbus::createSystemBusConnection(),
                                               std::move(lost));
    } catch (const sdbus::Error&) {
        return nullptr;
    }
}

/// Whether windows can be shown.
bool hasScreen() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Every adapter, and the agent over them.
class Agent {
public:
    explicit Agent(Connections connections)
        : m_timers(m_loop, m_clock), m_defaults(preferencesPath(m_folders)),
          m_desktopBus(m_loop, std::move(connections.desktop), [this] { m_loop.quit(0); }),
          m_systemBus(connectToSystemBus(m_loop, [this] { m_powerNotices.systemBusLost(); })),
          m_userNotificationCenter(m_loop, m_desktopBus, m_clock),
          m_powerNotices(m_systemBus.get(), m_desktopBus, [this] { m_loop.quit(0); }),
          m_systemSettings(m_loop, m_systemBus.get(), m_timers, m_regionalSettings),
          m_busThread(std::move(connections.link)), m_disposal(m_busThread),
          m_hostLink(m_loop, m_busThread), m_distributedNotifications(m_busThread),
          m_alarmWindow(loadAlarmWindow()),
          m_plenzoAlarm(platform(), {.folderName = folderName, .shortVersion = programVersion},
                        windowControllers()),
          m_inspector(
              m_loop, m_busThread,
              {.pendingAlarms = [this] { return m_plenzoAlarm.inspector().pendingAlarms(); },
               .displayedAlarms = [this] { return m_plenzoAlarm.inspector().displayedAlarms(); },
               .deliveredNotifications =
                   [this] { return m_plenzoAlarm.inspector().deliveredNotifications(); }}) {
        follow({});
        m_userNotificationCenter.setSounds(
            {.pathOf = [this](const std::string& name) { return m_sounds.pathOf(name); },
             .play = [this](const std::string& name) { m_sounds.play(name); }});
        hearOfSessionsEnd();
        m_hostLink.setDisconnected([this] { m_loop.quit(0); });
    }

    int run() {
        const Handle termination = onTerminationRequest(m_loop, [this](TerminationRequest request) {
            if (request == TerminationRequest::HangUp) {
                m_powerNotices.sessionEnds();
            }
            m_loop.quit(0);
        });
        m_plenzoAlarm.applicationDidFinishLaunching();
        const int exitCode = m_loop.run();
        m_plenzoAlarm.applicationWillTerminate();
        m_busThread.stop();
        return exitCode;
    }

private:
    Platform platform() {
        return {.clock = m_clock,
                .timers = m_timers,
                .regionalSettings = m_regionalSettings,
                .strings = m_strings,
                .folders = m_folders,
                .files = m_files,
                .defaults = m_defaults,
                .hostLink = m_hostLink,
                .distributedNotifications = m_distributedNotifications,
                .userNotificationCenter = m_userNotificationCenter,
                .workspace = m_workspace,
                .powerNotices = m_powerNotices,
                .systemChangeNotices = m_systemSettings,
                .disposal = m_disposal,
                .fileAccess = &m_bookmarks,
                .mailer = &m_mailer,
                .sounds = &m_sounds};
    }

    /// Null without a screen.
    std::unique_ptr<AlarmWindow> loadAlarmWindow() {
        if (!hasScreen()) {
            return nullptr;
        }
        return AlarmWindow::load({.window = {.interfaceFiles = m_interfaceFiles,
                                             .strings = m_strings,
                                             .iconFolder = resourceFolder() + "/icons",
                                             .prepareWindow = floatOnAllWorkspaces,
                                             .activate = activateIgnoringOtherPrograms},
                                  .workspace = m_workspace,
                                  .defaults = m_defaults,
                                  .clock = m_clock,
                                  .regionalSettings = m_regionalSettings,
                                  .timers = m_timers});
    }
    /// Without a wish of the user's, the colours are those of the desktop's theme, if it has one.
    static void follow(const DesktopAppearance& appearance) {
        using Scheme = DesktopAppearance::ColorScheme;
        if (!hasScreen()) {
            return;
        }
        QApplication::setPalette(QPalette());
        const bool isThemed = QApplication::palette() != QApplication::style()->standardPalette();
        if (appearance == DesktopAppearance() && isThemed) {
            return;
        }
        QApplication::setPalette(
            palette(appearance.colorScheme == Scheme::Dark ? Brightness::Dark : Brightness::Light,
                    appearance.highContrast ? Contrast::High : Contrast::Usual));
    }
    /// From session managers that speak to the screen's clients rather than over the bus. They are
    /// not to start the agent with the next session: the host does.
    void hearOfSessionsEnd() {
        if (!hasScreen()) {
            return;
        }
        const auto neverRestart = [](QSessionManager& manager) {
            manager.setRestartHint(QSessionManager::RestartNever);
        };
        QObject::connect(qApp, &QGuiApplication::saveStateRequest, qApp, neverRestart,
                         Qt::DirectConnection);
        QObject::connect(
            qApp, &QGuiApplication::commitDataRequest, qApp,
            [this](QSessionManager& /*manager*/) { m_powerNotices.sessionEnds(); },
            Qt::DirectConnection);
    }
    WindowControllers windowControllers() {
        return {.alarmWindow = m_alarmWindow ? &m_alarmWindow->controller() : nullptr};
    }

    MainLoop m_loop;
    SystemClock m_clock;
    AbsoluteTimers m_timers;
    RegionalSettingsOfSystem m_regionalSettings;
    MainStringTable m_strings{resourceFolder(), languagesOfUser()};
    XdgFolders m_folders;
    FilesOnDisk m_files;
    FileUserDefaults m_defaults;
    FileReferencesOfSystem m_fileReferences;
    /// Null without a screen.
    std::unique_ptr<OpenPanelOfDesktop> m_openPanel =
        hasScreen() ? std::make_unique<OpenPanelOfDesktop>(activateIgnoringOtherPrograms) : nullptr;
    BookmarkUtilities m_bookmarks{{.defaults = m_defaults,
                                   .references = m_fileReferences,
                                   .strings = m_strings,
                                   .openPanel = m_openPanel.get(),
                                   .programName = programName}};
    CanberraPlayer m_soundPlayer;
    NamedSounds m_sounds{soundFoldersOfUser(resourceFolder()), m_soundPlayer};
    MailClientsOfDesktop m_mailClients{m_loop};
    ScriptRunnerOfSystem m_scripts{m_loop};
    DelaysOnMainLoop m_delays{m_loop};
    MailUtilities m_mailer{{.clients = m_mailClients,
                            .scripts = m_scripts,
                            .delays = m_delays,
                            .scriptFolders = mailScriptFolders(m_folders)}};
    BusOnMainLoop m_desktopBus;
    std::unique_ptr<BusOnMainLoop> m_systemBus;
    FreedesktopNotifications m_userNotificationCenter;
    PowerNoticesOfSystem m_powerNotices;
    SystemSettingsWatch m_systemSettings;
    WorkspaceOfDesktop m_workspace;
    BusThread m_busThread;
    DisposalOnBusThread m_disposal;
    HostLinkOnBus m_hostLink;
    DistributedNotificationsOnBus m_distributedNotifications;
    InterfaceFiles m_interfaceFiles{resourceFolder(), languagesOfUser()};
    std::unique_ptr<AlarmWindow> m_alarmWindow;
    DesktopAppearanceWatch m_appearance{m_desktopBus, follow};
    PlenzoAlarm m_plenzoAlarm;
    InspectorOnBus m_inspector;
};

} // namespace

int runAgent() {
    Connections connections = connect();
    if (!connections.failure.empty()) {
        std::fprintf(stderr, "plenzoalarm: %s\n", connections.failure.c_str());
        return 1;
    }
    return Agent(std::move(connections)).run();
}

} // namespace plenzo
