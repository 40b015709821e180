#include "ui/controls/window_placement.h"

#include <algorithm>

namespace plenzo {

namespace {

/// From the edges of the screen; leaves room for the frame that the window manager draws.
constexpr int margin = 32;

} // namespace

QRect keptWithin(const QRect& window, const QRect& available) {
    const QSize size = window.size().boundedTo(available.size());
    const int x = std::clamp(window.x(), available.left(), available.right() + 1 - size.width());
    const int y = std::clamp(window.y(), available.top(), available.bottom() + 1 - size.height());
    return {QPoint(x, y), size};
}

QRect cornerPlacement(const QSize& size, const QRect& available, Qt::LayoutDirection direction) {
    const int x = direction == Qt::RightToLeft ? available.left() + margin
                                               : available.right() + 1 - margin - size.width();
    return keptWithin({QPoint(x, available.top() + margin), size}, available);
}

} // namespace plenzo
