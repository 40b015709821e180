#pragma once

#include <QRect>

namespace plenzo {

/// Where a window of that size appears on a screen's available area: in the corner in which
/// desktops show what is new, at the top and where lines end; no larger than the area.
[[nodiscard]] QRect cornerPlacement(const QSize& size, const QRect& available,
                                    Qt::LayoutDirection direction);

/// The window moved, and if need be made smaller, so that all of it lies in the area.
[[nodiscard]] QRect keptWithin(const QRect& window, const QRect& available);

} // namespace plenzo
