#include "ui/alarm/alarm_panel_controller.h"

#include "core/preference_keys.h"
#include "model/occurrence_date.h"
#include "propertylist/known_keys.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>

namespace plenzo {

namespace {

/// The list shows no more at a time.
constexpr std::size_t greatestVisibleRowCount = 5;

/// From the window's appearance until it takes the keyboard, when the settings say so.
constexpr double focusDelaySeconds = 3.2;

/// From an alarm until it has to be seen. What the window manager does to the window at the moment
/// of the alarm is known by then.
constexpr double sightDelaySeconds = 1.0;

} // namespace

void AlarmPanelController::addDisplayAlarm(const Alarm& alarm) {
    m_rows.push_back(alarmRow(++m_lastRowNumber, alarm, m_collaborators.dateText));
    m_collaborators.list.appendRow(m_rows.back());
    setLastRowFlag();
}

void AlarmPanelController::showAlarmWindowIfNecessary() {
    if (m_rows.empty()) {
        return;
    }
    m_collaborators.panel.sizeToRows(std::min(m_rows.size(), greatestVisibleRowCount));
    const std::size_t last = m_rows.size() - 1;
    m_collaborators.list.selectRow(last);
    m_collaborators.list.scrollToRow(last);
    showIfHidden();
    m_sightTimer = m_collaborators.timers.schedule(m_collaborators.clock.now() + sightDelaySeconds,
                                                   [this] { showIfHidden(); });
}

void AlarmPanelController::showIfHidden() {
    if (!m_collaborators.panel.isVisible()) {
        show();
    }
}

void AlarmPanelController::show() {
    snoozePrefsChanged();
    m_allModifierDown = false;
    m_collaborators.panel.setButtonTitles(ButtonScope::Selection);
    m_collaborators.panel.show();
    if (m_collaborators.defaults.boolForKey(preferences::takeFocus)) {
        m_focusTimer =
            m_collaborators.timers.schedule(m_collaborators.clock.now() + focusDelaySeconds,
                                            [this] { m_collaborators.panel.takeFocus(); });
    }
}

std::vector<DisplayedAlarm> AlarmPanelController::displayedAlarms() const {
    std::vector<DisplayedAlarm> displayed;
    displayed.reserve(m_rows.size());
    for (const AlarmRow& row : m_rows) {
        displayed.push_back({.row = row.row, .alarm = row.alarm});
    }
    return displayed;
}

void AlarmPanelController::removeDisplayAlarm(std::uint64_t row) {
    const auto found = std::ranges::find(m_rows, row, &AlarmRow::row);
    if (found != m_rows.end()) {
        redrawOrCloseAlarmWindowAfterDeletingAlarms(
            {static_cast<std::size_t>(found - m_rows.begin())});
    }
}

void AlarmPanelController::midnightRefresh() {
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        AlarmRow& row = m_rows[index];
        row.date =
            m_collaborators.dateText.dateStringForAlarm(row.alarm, AlarmDateText::SeenFrom::Now)
                .text;
        m_collaborators.list.updateRow(index, row);
    }
}

void AlarmPanelController::makeAlarmWindowKeyIfVisible() {
    if (m_collaborators.panel.isVisible()) {
        m_collaborators.panel.takeFocus();
    }
}

void AlarmPanelController::snoozePrefsChanged() {
    setSnoozeAmount(snoozeAmountFromSeconds(
        m_collaborators.defaults.integerForKey(preferences::snoozeSeconds)));
    if (m_isKey) {
        setDefaultButton();
    }
}

void AlarmPanelController::setSnoozeAmount(const SnoozeAmount& amount) {
    m_snoozeAmount = amount;
    m_collaborators.panel.setSnoozeAmount(amount);
}

void AlarmPanelController::setSnoozeValue(std::optional<std::int64_t> value) {
    setSnoozeAmount({.value = value.value_or(0), .units = m_snoozeAmount.units});
}

void AlarmPanelController::setSnoozeUnits(SnoozeUnits units) {
    setSnoozeAmount({.value = m_snoozeAmount.value, .units = units});
}

AlarmPanelController::Indices AlarmPanelController::rowsToActOn() const {
    if (!m_allModifierDown) {
        return m_collaborators.list.selectedRows();
    }
    Indices all(m_rows.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

std::optional<Instant> AlarmPanelController::snoozeDate(const Alarm& alarm) const {
    const double offsetSeconds = m_snoozeAmount.offsetSeconds();
    const Instant now = m_collaborators.clock.now();
    if (offsetSeconds > 0) {
        return now + offsetSeconds;
    }
    const AlarmContext context{.now = now,
                               .systemZone = m_collaborators.regionalSettings.timeZone()};
    const auto start = eventDateInLocalTime(*alarm.eventDict, CarryForward::No, context);
    const auto& date = start ? start : alarm.fireDate;
    return date ? std::optional(date->instant() + offsetSeconds) : std::nullopt;
}

void AlarmPanelController::snoozeButton() {
    const Indices rows = rowsToActOn();
    for (const std::size_t row : rows) {
        const Alarm& alarm = m_rows[row].alarm;
        if (const auto date = snoozeDate(alarm)) {
            m_collaborators.hostCommands.sendSnoozeToPlenzo(alarm, *date);
        }
    }
    redrawOrCloseAlarmWindowAfterDeletingAlarms(rows);
}

void AlarmPanelController::dismissButton() {
    dismissAlarms(rowsToActOn());
}

void AlarmPanelController::dismissAlarms(const Indices& rows) {
    for (const std::size_t row : rows) {
        m_collaborators.hostCommands.sendAcknowledgedToPlenzo(m_rows[row].alarm);
    }
    redrawOrCloseAlarmWindowAfterDeletingAlarms(rows);
}

void AlarmPanelController::todoCheckbox(std::size_t row, bool done) {
    if (row < m_rows.size()) {
        complete({row}, done);
    }
}

void AlarmPanelController::toggleSelectedTodos() {
    const Indices rows = m_collaborators.list.selectedRows();
    complete(rows, rows.empty() || !m_rows[rows.front()].done);
}

void AlarmPanelController::complete(const Indices& rows, bool done) {
    for (const std::size_t index : rows) {
        AlarmRow& row = m_rows[index];
        if (row.isToDo && !row.readOnly) {
            sendCompletion(row.alarm, done);
        }
    }
    dismissAlarms(rows);
}

void AlarmPanelController::sendCompletion(Alarm& alarm, bool done) {
    // A copy: what the host sent stays what it was until the host says otherwise.
    alarm.eventDict = std::make_shared<Dictionary>(*alarm.eventDict);
    alarm.eventDict->set(keys::completed, Value(done));
    m_collaborators.hostCommands.sendCompletedChangeToPlenzo(alarm);
}

void AlarmPanelController::redrawOrCloseAlarmWindowAfterDeletingAlarms(const Indices& rows) {
    if (rows.empty()) {
        return;
    }
    const Indices selected = m_collaborators.list.selectedRows();
    const Indices fromLast(rows.rbegin(), rows.rend());
    for (const std::size_t row : fromLast) {
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(row));
    }
    m_collaborators.list.removeRows(rows);
    if (m_rows.empty()) {
        forgetTimers();
        m_collaborators.panel.close();
        return;
    }
    setLastRowFlag();
    // What is left of the selection stays selected: the user is looking at it.
    if (m_collaborators.list.selectedRows().empty()) {
        const std::size_t remembered = selected.empty() ? 0 : selected.front();
        m_collaborators.list.selectRow(std::min(remembered, m_rows.size() - 1));
    }
}

void AlarmPanelController::setLastRowFlag() {
    // Rows are only ever added at the end, so no other than the last two can be wrong.
    const std::size_t first = m_rows.size() < 2 ? 0 : m_rows.size() - 2;
    for (std::size_t index = first; index < m_rows.size(); ++index) {
        const bool isLast = index + 1 == m_rows.size();
        if (m_rows[index].lastRow != isLast) {
            m_rows[index].lastRow = isLast;
            m_collaborators.list.updateRow(index, m_rows[index]);
        }
    }
}

void AlarmPanelController::showEvent(std::size_t row, HostCommands::InfoPanel infoPanel) {
    if (row < m_rows.size()) {
        m_collaborators.hostCommands.showAlarmInPlenzo(m_rows[row].alarm, infoPanel);
    }
}

void AlarmPanelController::showSelectedEvent() {
    const Indices rows = m_collaborators.list.selectedRows();
    if (!rows.empty()) {
        showEvent(rows.front(), HostCommands::InfoPanel::Show);
    }
}

void AlarmPanelController::setAllModifierDown(bool down) {
    if (m_allModifierDown != down) {
        m_allModifierDown = down;
        m_collaborators.panel.setButtonTitles(down ? ButtonScope::All : ButtonScope::Selection);
    }
}

void AlarmPanelController::windowDidBecomeKey() {
    m_focusTimer.reset();
    m_isKey = true;
    setDefaultButton();
}

void AlarmPanelController::setDefaultButton() {
    m_collaborators.panel.setDefaultButton(
        m_collaborators.defaults.boolForKey(preferences::snoozeDefault) ? DefaultButton::Snooze
                                                                        : DefaultButton::Dismiss);
}

void AlarmPanelController::windowDidResignKey() {
    m_isKey = false;
    m_collaborators.panel.setDefaultButton(DefaultButton::None);
    setAllModifierDown(false);
}

void AlarmPanelController::forgetTimers() {
    m_focusTimer.reset();
    m_sightTimer.reset();
}

void AlarmPanelController::windowWillClose() {
    forgetTimers();
    const std::vector<AlarmRow> rows = std::move(m_rows);
    m_rows.clear();
    Indices all(rows.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    m_collaborators.list.removeRows(all);
    for (const AlarmRow& row : rows) {
        m_collaborators.hostCommands.sendAcknowledgedToPlenzo(row.alarm);
    }
    if (m_delegate != nullptr) {
        m_delegate->alarmWindowClosed();
    }
}

} // namespace plenzo
