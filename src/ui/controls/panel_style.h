#pragma once

#include <QPalette>
#include <QString>

namespace plenzo {

/// The look of the controls in our panels, in the palette's colours: rounded, quiet, with the
/// button that Return clicks (the one whose property "isDefault" is true) in the accent colour. The
/// icons come from that folder.
[[nodiscard]] QString panelStyleSheet(const QPalette& palette, const QString& iconFolder,
                                      Qt::LayoutDirection direction);

[[nodiscard]] bool isDark(const QPalette& palette);

} // namespace plenzo
