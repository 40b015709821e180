#include "ui/controls/elided_label.h"

#include <QPainter>
#include <QStyle>
#include <cmath>

namespace plenzo {

namespace {

/// No screen is wide enough for more, and shaping a megabyte would hold the main loop.
constexpr qsizetype greatestLength = 1000;

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setLine(const QString& text) {
    setText(text.left(greatestLength).simplified());
}

int ElidedLabel::textWidth() const {
    return static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(text())));
}

bool ElidedLabel::isElided() const {
    return elidedText() != text();
}

QString ElidedLabel::elidedText() const {
    return QFontMetricsF(font()).elidedText(text(), Qt::ElideRight, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    // The ellipsis belongs to the text, whatever the window's direction is.
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const int flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) |
                      Qt::TextSingleLine;
    style()->drawItemText(&painter, contentsRect(), flags, palette(), isEnabled(), elidedText(),
                          foregroundRole());
}

} // namespace plenzo
