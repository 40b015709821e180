#include "ui/alarm/alarm_cell_parts.h"

#include "ui/controls/colored_check_box.h"

#include <QPainter>

namespace plenzo {

void AlarmColorBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    const double radius = width() / 2.0;
    painter.drawRoundedRect(rect(), radius, radius);
}

void AlarmCheckBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawColoredCheckBox(painter, rect(),
                        {.color = m_state.color,
                         .mark = m_state.done ? CheckMark::Check : CheckMark::None,
                         .enabled = m_state.enabled,
                         .highlighted = m_state.isHot});
}

void AlarmInfoButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // In twentieths of the button.
    painter.scale(width() / 20.0, height() / 20.0);
    QColor inside = m_color;
    inside.setAlphaF(m_isHot ? 0.16F : 0);
    painter.setPen(QPen(m_color, 1.4));
    painter.setBrush(inside);
    painter.drawEllipse(QPointF(10, 10), 7.5, 7.5);
    painter.setPen(QPen(m_color, 1.7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(10, 9.4), QPointF(10, 13.6));
    painter.drawPoint(QPointF(10, 6.5));
}

void AlarmSeparator::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), m_color);
}

} // namespace plenzo
