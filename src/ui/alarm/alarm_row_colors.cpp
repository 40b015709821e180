#include "ui/alarm/alarm_row_colors.h"

#include "ui/controls/colors.h"
#include "ui/controls/panel_style.h"

namespace plenzo {

namespace {

constexpr double inactiveFraction = 0.7;

QColor selectionColor(const AlarmRow& row, const QPalette& palette) {
    return row.color ? toQColor(*row.color) : palette.color(QPalette::Active, QPalette::Highlight);
}

/// On a dark ground a pale row would be the brightest thing in the window.
QColor inactiveBackground(const QColor& selection, const QPalette& palette) {
    return isDark(palette) ? blended(selection, palette.color(QPalette::Base), inactiveFraction)
                           : inactiveHighlightColor(selection);
}

} // namespace

QColor inactiveHighlightColor(const QColor& color) {
    return blended(color, Qt::white, inactiveFraction);
}

AlarmRowColors alarmRowColors(const AlarmRow& row, RowState state, const QPalette& palette) {
    if (state == RowState::Normal) {
        return {.background = palette.color(QPalette::Base), .text = palette.color(QPalette::Text)};
    }
    const QColor selection = selectionColor(row, palette);
    const QColor background =
        state == RowState::Selected ? selection : inactiveBackground(selection, palette);
    return {.background = background, .text = readableOn(background)};
}

} // namespace plenzo
