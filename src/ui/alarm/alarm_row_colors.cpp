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
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    if (state == RowState::Normal) {
        return {.background = ground, .text = text};
    }
    const QColor selection = selectionColor(row, palette);
    const QColor wanted =
        state == RowState::Selected ? selection : inactiveBackground(selection, palette);
    // White calendars in light colours, and black ones in dark colours, can be selected too.
    const QColor background = distinctFrom(ground, wanted, text);
    return {.background = background, .text = readableOn(background)};
}

} // namespace plenzo
