#pragma once

#include "ui/alarm/alarm_panel_keys.h"
#include "ui/controls/key_press.h"

namespace plenzo {

[[nodiscard]] inline KeyPress keyPressOf(const QKeyEvent& event) {
    return {.character = firstCharacterOfEvent(event),
            .command = event.modifiers().testFlag(Qt::ControlModifier),
            .isRepeated = event.isAutoRepeat()};
}

} // namespace plenzo
