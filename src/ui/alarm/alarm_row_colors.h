#pragma once

#include "ui/alarm/alarm_row.h"

#include <QColor>
#include <QPalette>

namespace plenzo {

enum class RowState { Normal, Selected, SelectedInactive };

/// A row's background, and the text that reads on it.
struct AlarmRowColors {
    QColor background;
    QColor text;
};

/// A selected row takes its calendar's colour; in a window without the keyboard the colour is faded
/// towards white, or towards a dark ground.
[[nodiscard]] AlarmRowColors alarmRowColors(const AlarmRow& row, RowState state,
                                            const QPalette& palette);

/// How a selection's colour looks in a window without the keyboard.
[[nodiscard]] QColor inactiveHighlightColor(const QColor& color);

} // namespace plenzo
