#pragma once

#include "core/alarm_window_controller.h"
#include "core/status_window_controller.h"

#include <string>
#include <vector>

namespace plenzo {

/// An alarm window of rows alone.
class FakeAlarmWindow final : public AlarmWindowController {
public:
    void setDelegate(AlarmWindowControllerDelegate* /*delegate*/) override {}
    void makeAlarmWindowKeyIfVisible() override { ++keyCount; }
    void addDisplayAlarm(const Alarm& alarm) override { rows.push_back({nextRow++, alarm}); }
    void showAlarmWindowIfNecessary() override { isShown = isShown || !rows.empty(); }
    [[nodiscard]] std::vector<DisplayedAlarm> displayedAlarms() const override { return rows; }
    void removeDisplayAlarm(std::uint64_t row) override {
        std::erase_if(rows, [row](const DisplayedAlarm& alarm) { return alarm.row == row; });
    }
    void midnightRefresh() override { ++refreshCount; }
    void snoozePrefsChanged() override { ++settingsCount; }

    [[nodiscard]] std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        for (const DisplayedAlarm& row : rows) {
            titles.emplace_back(row.alarm.eventText(keys::title));
        }
        return titles;
    }

    std::vector<DisplayedAlarm> rows;
    std::uint64_t nextRow = 1;
    bool isShown = false;
    int refreshCount = 0;
    int settingsCount = 0;
    int keyCount = 0;
};

/// A status window that remembers what it was told: "remove a", "delta 2", "all 3", "weather",
/// "reload".
class FakeStatusWindow final : public StatusWindowController {
public:
    void removeShownEventsWithUIDs(const std::vector<std::string>& uids) override {
        for (const std::string& uid : uids) {
            told.push_back("remove " + uid);
        }
    }
    void updateShownEventsWithEventDicts(std::span<const EventDict> eventDicts,
                                         bool delta) override {
        const auto count = std::ranges::count_if(
            eventDicts, [](const EventDict& eventDict) { return eventDict != nullptr; });
        told.push_back((delta ? "delta " : "all ") + std::to_string(count));
    }
    void processWeatherDict(const Dictionary& /*weather*/) override {
        told.emplace_back("weather");
    }
    void reloadIfVisible() override { told.emplace_back("reload"); }

    std::vector<std::string> told;
};

} // namespace plenzo
