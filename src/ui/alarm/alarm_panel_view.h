#pragma once

#include "ui/alarm/snooze_amount.h"

#include <cstddef>

namespace plenzo {

/// Which rows the buttons of the alarm window act on.
enum class ButtonScope { Selection, All };

enum class DefaultButton { None, Snooze, Dismiss };

/// The alarm window around its list, as its controller sees it.
class AlarmPanelView {
public:
    AlarmPanelView() = default;
    AlarmPanelView(const AlarmPanelView&) = delete;
    AlarmPanelView& operator=(const AlarmPanelView&) = delete;
    virtual ~AlarmPanelView() = default;

    [[nodiscard]] virtual bool isVisible() const = 0;
    /// Makes the list that many rows high; the upper edge stays where it is.
    virtual void sizeToRows(std::size_t count) = 0;
    /// Fades in above all other windows, on the screen where the user is, without the keyboard.
    virtual void show() = 0;
    /// The user has dealt with everything.
    virtual void close() = 0;
    /// Brings the window to the front with the keyboard.
    virtual void takeFocus() = 0;

    virtual void setSnoozeAmount(const SnoozeAmount& amount) = 0;
    virtual void setButtonTitles(ButtonScope scope) = 0;
    virtual void setDefaultButton(DefaultButton button) = 0;
    /// What was typed is not to be had here.
    virtual void beep() = 0;
};

} // namespace plenzo
