#include "ui/controls/colored_check_box.h"

#include "ui/controls/colors.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace plenzo {

namespace {

// In sixteenths of the box, from its upper left corner.
constexpr double unitsPerBox = 16;
constexpr double lineWidth = 1.5;
constexpr double cornerRadius = 4.5;
constexpr double markWidth = 2;

QRectF squareIn(const QRectF& bounds) {
    const double side = std::min(bounds.width(), bounds.height());
    return {bounds.center() - QPointF(side, side) / 2, QSizeF(side, side)};
}

QPainterPath path(CheckMark mark) {
    QPainterPath path;
    if (mark == CheckMark::Check) {
        path.moveTo(4.2, 8.4);
        path.lineTo(7, 11.2);
        path.lineTo(11.8, 5.2);
    } else if (mark == CheckMark::Dash) {
        path.moveTo(4.5, 8);
        path.lineTo(11.5, 8);
    }
    return path;
}

void drawBox(QPainter& painter, const ColoredCheckBoxLook& look) {
    const QRectF box = QRectF(0, 0, unitsPerBox, unitsPerBox)
                           .adjusted(lineWidth / 2, lineWidth / 2, -lineWidth / 2, -lineWidth / 2);
    QColor inside = look.color;
    if (look.mark == CheckMark::None) {
        inside.setAlphaF(look.highlighted ? 0.3F : 0.08F);
    }
    painter.setPen(QPen(look.color, lineWidth));
    painter.setBrush(inside);
    painter.drawRoundedRect(box, cornerRadius, cornerRadius);
}

} // namespace

void drawColoredCheckBox(QPainter& painter, const QRectF& bounds, const ColoredCheckBoxLook& look) {
    const QRectF square = squareIn(bounds);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(painter.opacity() * (look.enabled ? 1 : 0.45));
    painter.translate(square.topLeft());
    painter.scale(square.width() / unitsPerBox, square.height() / unitsPerBox);
    drawBox(painter, look);
    painter.setPen(
        QPen(readableOn(look.color), markWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path(look.mark));
    painter.restore();
}

} // namespace plenzo
