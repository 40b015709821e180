#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace plenzo {

enum class CheckMark { None, Check, Dash };

struct ColoredCheckBoxLook {
    QColor color;
    CheckMark mark = CheckMark::None;
    bool enabled = true;
    bool highlighted = false;
};

/// Draws a check box in a calendar's colour into the middle of the rectangle, as large as fits: the
/// outline alone while it is empty, filled when it is marked.
void drawColoredCheckBox(QPainter& painter, const QRectF& bounds, const ColoredCheckBoxLook& look);

} // namespace plenzo
