#pragma once

#include <QKeyEvent>

namespace plenzo {

/// The character of a key without its modifiers, in lower case; Return is 13, Enter 3, Escape 27,
/// Backspace 8 and Delete 127; 0 for a key that has none. With Ctrl, a key
/// of a layout without Latin letters is what an American keyboard has in its place.
[[nodiscard]] char32_t firstCharacterOfEvent(const QKeyEvent& event);

} // namespace plenzo
