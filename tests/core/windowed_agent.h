#pragma once

#include "core/test_agent.h"
#include "support/fake_windows.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// The agent with both windows; alarms are rows of the alarm window.
struct WindowedAgent : TestDesktop {
    explicit WindowedAgent(Instant now = utc(2026, 3, 10, 12)) : TestDesktop(now) {
        agent.prefsUpdated(Dictionary{{Key(preferences::issueAlarms), true},
                                      {Key(preferences::useNotificationCenter), false}});
    }

    void launch() {
        agent.applicationDidFinishLaunching();
        statusWindow.told.clear();
    }
    void useNotifications() {
        agent.prefsUpdated({{Key(preferences::useNotificationCenter), true}});
    }
    void pushFull(const Array& eventDicts) { agent.alarmsUpdated(eventDicts, false); }
    void pushDelta(const Array& eventDicts) { agent.alarmsUpdated(eventDicts, true); }
    /// What the status window was told since this was asked last.
    std::vector<std::string> told() { return std::exchange(statusWindow.told, {}); }
    /// What was opened since this was asked last.
    std::vector<std::string> opened() { return std::exchange(workspace.opened, {}); }
    std::vector<std::string> played() { return std::exchange(sounds.played, {}); }
    [[nodiscard]] std::vector<std::string> pendingUIDs() const {
        std::vector<std::string> uids;
        for (const Value& row : agent.inspector().pendingAlarms()) {
            uids.emplace_back(row.dictionary()->stringForKey(keys::uid).value_or("none"));
        }
        return uids;
    }

    FakeAlarmWindow alarmWindow;
    FakeStatusWindow statusWindow;
    PlenzoAlarm agent{
        platform(), testIdentity(), {.alarmWindow = &alarmWindow, .statusWindow = &statusWindow}};
};

} // namespace plenzo
