#pragma once

#include "model/alarm.h"

#include <cstdint>
#include <vector>

namespace plenzo {

/// One row of the alarm window.
struct DisplayedAlarm {
    /// Of this row and, as long as the program runs, no other.
    std::uint64_t row;
    Alarm alarm;
};

class AlarmWindowControllerDelegate {
public:
    AlarmWindowControllerDelegate() = default;
    AlarmWindowControllerDelegate(const AlarmWindowControllerDelegate&) = delete;
    AlarmWindowControllerDelegate& operator=(const AlarmWindowControllerDelegate&) = delete;
    virtual ~AlarmWindowControllerDelegate() = default;

    /// The user has closed the window, and with it dismissed what was in it.
    virtual void alarmWindowClosed() = 0;
};

/// The window of the alarms that have fired, as the core sees it.
class AlarmWindowController {
public:
    AlarmWindowController() = default;
    AlarmWindowController(const AlarmWindowController&) = delete;
    AlarmWindowController& operator=(const AlarmWindowController&) = delete;
    virtual ~AlarmWindowController() = default;

    /// Null when nobody is to know of the window's end.
    virtual void setDelegate(AlarmWindowControllerDelegate* delegate) = 0;
    /// Adds a row, without showing the window.
    virtual void addDisplayAlarm(const Alarm& alarm) = 0;
    /// Shows the window when it has rows.
    virtual void showAlarmWindowIfNecessary() = 0;
    [[nodiscard]] virtual std::vector<DisplayedAlarm> displayedAlarms() const = 0;
    /// Does nothing when the row is gone already.
    virtual void removeDisplayAlarm(std::uint64_t row) = 0;
    /// Says "Today" and "Tomorrow" as of the new day.
    virtual void midnightRefresh() = 0;
    /// Reads the settings of the snooze anew.
    virtual void snoozePrefsChanged() = 0;
    /// Gives the window the keyboard, when it is there.
    virtual void makeAlarmWindowKeyIfVisible() = 0;
};

} // namespace plenzo
