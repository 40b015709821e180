#pragma once

#include "ui/alarm/alarm_panel_controller.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace plenzo {

/// A key and what is held with it.
struct KeyPress {
    /// Without the modifiers and in lower case; 0 for a key that has none.
    char32_t character = 0;
    /// The Ctrl key.
    bool command = false;
    /// It is still held from before.
    bool isRepeated = false;
};

namespace keycharacters {

inline constexpr char32_t enter = 3;
inline constexpr char32_t backspace = 8;
inline constexpr char32_t carriageReturn = 13;
inline constexpr char32_t escape = 27;
inline constexpr char32_t forwardDelete = 127;

} // namespace keycharacters

/// What the keys of the alarm window do, by where they are typed.
class AlarmPanelKeys {
public:
    struct Collaborators {
        AlarmPanelController& controller;
        AlarmListView& list;
        AlarmPanelView& panel;
        const UserDefaults& defaults;
        /// In seconds: a digit that comes later than this begins a new amount.
        double doubleClickSeconds = 0.4;
    };

    explicit AlarmPanelKeys(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// The letters that choose the units in the amount's field, in lower case, by units; 0 for
    /// none.
    void setUnitLetters(const std::array<char32_t, snoozeUnitsCount>& letters) {
        m_unitLetters = letters;
    }

    /// Anywhere in the window. Whether the key was made use of.
    bool handleKeyDown(const KeyPress& key);
    /// In the list, at that many seconds of the toolkit's event clock.
    bool handleKeyInList(const KeyPress& key, double timestampSeconds);
    /// Text that is typed or pasted into the amount's field. True when it is not to be inserted.
    bool handleInsert(std::u32string_view text);

private:
    bool handleCommand(const KeyPress& key);
    void clickDefaultButton();
    void typeDigit(int digit, double timestampSeconds);
    [[nodiscard]] std::optional<SnoozeUnits> unitsOfLetter(char32_t letter) const;

    Collaborators m_collaborators;
    std::array<char32_t, snoozeUnitsCount> m_unitLetters{};
    double m_lastKeySeconds = 0;
};

} // namespace plenzo
