#pragma once

#include <QKeyEvent>

namespace plenzo {

/// The character of a key without its modifiers, in lower case; Return is 13, Enter 3, Escape 27,
/// Backspace 8 and Delete 127; 0 for a key that has none.
[[nodiscard]] char32_t firstCharacterOfEvent(const QKeyEvent& event);

} // namespace plenzo
