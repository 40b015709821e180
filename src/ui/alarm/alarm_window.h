#pragma once

#include "ui/alarm/alarm_panel_window.h"

#include <memory>

namespace plenzo {

/// The alarm window, put together: what is on the screen, what decides, and the keys between them.
class AlarmWindow {
public:
    struct Collaborators {
        AlarmPanelWindow::Collaborators window;
        Workspace& workspace;
        const UserDefaults& defaults;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        Timers& timers;
    };

    /// Null when an interface file is missing or broken. Needs the application object.
    static std::unique_ptr<AlarmWindow> load(const Collaborators& collaborators);

    [[nodiscard]] AlarmPanelController& controller() { return m_controller; }
    [[nodiscard]] AlarmPanelWindow& window() { return *m_window; }

private:
    AlarmWindow(const Collaborators& collaborators, std::unique_ptr<AlarmPanelWindow> window);

    std::unique_ptr<AlarmPanelWindow> m_window;
    HostCommands m_hostCommands;
    AlarmDateText m_dateText;
    AlarmPanelController m_controller;
    AlarmPanelKeys m_keys;
};

} // namespace plenzo
