#pragma once

#include "core/alarm_date_text.h"
#include "core/alarm_window_controller.h"
#include "model/host_commands.h"
#include "platform/clock.h"
#include "platform/regional_settings.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"
#include "ui/alarm/alarm_list_view.h"
#include "ui/alarm/alarm_panel_view.h"
#include "ui/alarm/snooze_amount.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace plenzo {

/// Owns the rows of the alarm window and decides what the user's actions in it do. The window
/// appears with the first row and closes with the last; every decision goes to the host.
class AlarmPanelController final : public AlarmWindowController {
public:
    struct Collaborators {
        AlarmListView& list;
        AlarmPanelView& panel;
        HostCommands& hostCommands;
        const AlarmDateText& dateText;
        const UserDefaults& defaults;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        Timers& timers;
    };

    explicit AlarmPanelController(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// Null when nobody is to know.
    void setDelegate(AlarmWindowControllerDelegate* delegate) override { m_delegate = delegate; }
    void addDisplayAlarm(const Alarm& alarm) override;
    void showAlarmWindowIfNecessary() override;
    [[nodiscard]] std::vector<DisplayedAlarm> displayedAlarms() const override;
    void removeDisplayAlarm(std::uint64_t row) override;
    void midnightRefresh() override;
    void snoozePrefsChanged() override;
    void makeAlarmWindowKeyIfVisible() override;

    /// Snoozes the selected rows, or all of them, and removes them.
    void snoozeButton();
    /// Acknowledges the selected rows, or all of them, and removes them.
    void dismissButton();
    /// Completes the to-do of a row whose check box was clicked; every row acted on is dismissed.
    void todoCheckbox(std::size_t row, bool done);
    /// The same for the selected rows, which all become what the first of them is not.
    void toggleSelectedTodos();
    /// Brings the host forward with the row's event, or with its info panel. Does nothing for a row
    /// that there is not.
    void showEvent(std::size_t row, HostCommands::InfoPanel infoPanel);
    /// A double click on the list.
    void showSelectedEvent();

    /// The user typed an amount, or emptied the field, which is 0.
    void setSnoozeValue(std::optional<std::int64_t> value);
    void setSnoozeUnits(SnoozeUnits units);
    [[nodiscard]] const SnoozeAmount& snoozeAmount() const { return m_snoozeAmount; }

    /// Whether a key is held that lets the buttons act on all rows.
    void setAllModifierDown(bool down);

    void windowDidBecomeKey();
    void windowDidResignKey();
    /// The user closes the window, which dismisses what is in it.
    void windowWillClose();

private:
    using Indices = std::vector<std::size_t>;

    [[nodiscard]] Indices rowsToActOn() const;
    [[nodiscard]] std::optional<Instant> snoozeDate(const Alarm& alarm) const;
    void setSnoozeAmount(const SnoozeAmount& amount);
    void setDefaultButton();
    void sendCompletion(Alarm& alarm, bool done);
    void complete(const Indices& rows, bool done);
    void dismissAlarms(const Indices& rows);
    void redrawOrCloseAlarmWindowAfterDeletingAlarms(const Indices& rows);
    void setLastRowFlag();
    void show();
    void showIfHidden();
    void forgetTimers();

    Collaborators m_collaborators;
    AlarmWindowControllerDelegate* m_delegate = nullptr;
    std::vector<AlarmRow> m_rows;
    std::uint64_t m_lastRowNumber = 0;
    SnoozeAmount m_snoozeAmount;
    bool m_allModifierDown = false;
    bool m_isKey = false;
    Handle m_focusTimer;
    /// Looks whether the window is really there.
    Handle m_sightTimer;
};

} // namespace plenzo
