#pragma once

#include <QPalette>

namespace plenzo {

enum class Brightness { Light, Dark };
enum class Contrast { Usual, High };

/// The colours of our windows where the toolkit does not follow the desktop.
[[nodiscard]] QPalette palette(Brightness brightness, Contrast contrast);

} // namespace plenzo
