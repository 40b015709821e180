#include "ui/alarm/alarm_panel_keys.h"

#include "core/preference_keys.h"

#include <algorithm>

namespace plenzo {

namespace {

bool isDigit(char32_t character) {
    return character >= U'0' && character <= U'9';
}

} // namespace

bool AlarmPanelKeys::handleKeyDown(const KeyPress& key) {
    if (key.command) {
        return handleCommand(key);
    }
    switch (key.character) {
    case keycharacters::escape:
        // The window is not to go by mistake: whatever is in it would be dismissed.
        m_collaborators.panel.beep();
        return true;
    case keycharacters::carriageReturn:
    case keycharacters::enter:
        if (!key.isRepeated) { // a key that is held deals with no row after the other
            clickDefaultButton();
        }
        return true;
    default:
        return false;
    }
}

bool AlarmPanelKeys::handleCommand(const KeyPress& key) {
    void (AlarmPanelController::*action)() = nullptr;
    switch (key.character) {
    case U'/':
        action = &AlarmPanelController::toggleSelectedTodos;
        break;
    case U'd':
        action = &AlarmPanelController::dismissButton;
        break;
    case U's':
        action = &AlarmPanelController::snoozeButton;
        break;
    default:
        return false;
    }
    if (!key.isRepeated) {
        (m_collaborators.controller.*action)();
    }
    return true;
}

void AlarmPanelKeys::clickDefaultButton() {
    if (m_collaborators.defaults.boolForKey(preferences::snoozeDefault)) {
        m_collaborators.controller.snoozeButton();
    } else {
        m_collaborators.controller.dismissButton();
    }
}

bool AlarmPanelKeys::handleKeyInList(const KeyPress& key, double timestampSeconds) {
    if (key.character == keycharacters::backspace ||
        key.character == keycharacters::forwardDelete) {
        m_collaborators.panel.beep();
        return true;
    }
    if (key.command && key.character == U'a') {
        m_collaborators.list.selectAllRows();
        return true;
    }
    if (!key.command && isDigit(key.character)) {
        typeDigit(static_cast<int>(key.character - U'0'), timestampSeconds);
        return true;
    }
    return handleKeyDown(key);
}

void AlarmPanelKeys::typeDigit(int digit, double timestampSeconds) {
    const bool continues =
        timestampSeconds - m_lastKeySeconds <= m_collaborators.doubleClickSeconds;
    m_lastKeySeconds = timestampSeconds;
    const std::int64_t value =
        continues ? m_collaborators.controller.snoozeAmount().value : std::int64_t{0};
    m_collaborators.controller.setSnoozeValue(withDigit(value, digit));
}

std::optional<SnoozeUnits> AlarmPanelKeys::unitsOfLetter(char32_t letter) const {
    const auto found = std::ranges::find(m_unitLetters, letter);
    return letter != 0 && found != m_unitLetters.end()
               ? std::optional(static_cast<SnoozeUnits>(found - m_unitLetters.begin()))
               : std::nullopt;
}

bool AlarmPanelKeys::handleInsert(std::u32string_view text) {
    if (text.empty()) {
        return false;
    }
    if (const auto units = unitsOfLetter(text.front())) {
        m_collaborators.controller.setSnoozeUnits(*units);
        return true;
    }
    if (handleKeyDown({.character = text.front()})) {
        return true;
    }
    if (!std::ranges::all_of(text, isDigit)) {
        m_collaborators.panel.beep();
        return true;
    }
    return false;
}

} // namespace plenzo
