#pragma once

#include "core/preference_keys.h"
#include "propertylist/known_keys.h"
#include "support/fake_alarm_panel.h"
#include "support/fake_desktop.h"
#include "support/fake_timers.h"
#include "support/fake_user_defaults.h"
#include "support/fake_workspace.h"
#include "support/instants.h"
#include "ui/alarm/alarm_panel_controller.h"
#include "ui/alarm/alarm_panel_keys.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// What an alarm window needs, played: in Berlin, at noon UTC of 10 March 2026.
struct AlarmSurroundings {
    AlarmSurroundings() { registerDefaults(defaults); }

    [[nodiscard]] Alarm alarm(const std::string& title, const Dictionary& more = {}) const {
        Dictionary event{{keys::uid, title}, {keys::title, title}, {keys::date, start.date()}};
        for (const auto& [key, value] : more) {
            event.set(key, value);
        }
        return {.fireDate = CalendarDate(clock.now(), regionalSettings.timeZone()),
                .eventDict = std::make_shared<Dictionary>(std::move(event)),
                .reminderDict = Dictionary{{keys::uid, title + "-r"}},
                .headerString = {}};
    }
    /// The commands since this was asked last, without their scheme: "snooze/a-r/60".
    std::vector<std::string> commands() {
        std::vector<std::string> commands = std::exchange(workspace.opened, {});
        for (std::string& command : commands) {
            const std::string scheme = "plenzoevent://";
            command.erase(command.find(scheme), scheme.size());
        }
        return commands;
    }
    [[nodiscard]] static std::string snooze(const std::string& title, Instant until) {
        const auto seconds = static_cast<long long>(until.secondsSinceReferenceDate());
        return "open quietly snooze/" + title + "-r/" + std::to_string(seconds);
    }

    Instant start = utc(2026, 3, 10, 12, 15);
    FakeClock clock{utc(2026, 3, 10, 12)};
    FakeTimers timers{clock};
    FakeRegionalSettings regionalSettings{zone("Europe/Berlin")};
    FakeLocalizedStrings strings;
    FakeUserDefaults defaults;
    FakeWorkspace workspace;
};

/// The alarm window without a screen.
struct AlarmPanelFixture : AlarmSurroundings {
    void add(const std::vector<std::string>& titles) {
        for (const std::string& title : titles) {
            controller.addDisplayAlarm(alarm(title));
        }
        controller.showAlarmWindowIfNecessary();
    }
    void set(const char* preference, Value value) {
        defaults.setValues(Dictionary{{Key(preference), std::move(value)}});
        controller.snoozePrefsChanged();
    }
    [[nodiscard]] std::uint64_t rowOf(std::size_t index) const {
        return controller.displayedAlarms().at(index).row;
    }

    HostCommands hostCommands{workspace};
    AlarmDateText dateText{
        {.clock = clock, .regionalSettings = regionalSettings, .strings = strings}};
    FakeAlarmList list;
    FakeAlarmPanel panel;
    AlarmPanelController controller{{.list = list,
                                     .panel = panel,
                                     .hostCommands = hostCommands,
                                     .dateText = dateText,
                                     .defaults = defaults,
                                     .clock = clock,
                                     .regionalSettings = regionalSettings,
                                     .timers = timers}};
    AlarmPanelKeys keys{{.controller = controller,
                         .list = list,
                         .panel = panel,
                         .defaults = defaults,
                         .doubleClickSeconds = 0.4}};
};

} // namespace plenzo
