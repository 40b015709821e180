#include "ui/controls/key_press.h"

#include <QChar>

namespace plenzo {

char32_t firstCharacterOfEvent(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
        return U'\r';
    case Qt::Key_Enter:
        return U'\x03';
    case Qt::Key_Escape:
        return U'\x1b';
    case Qt::Key_Backspace:
        return U'\b';
    case Qt::Key_Delete:
        return U'\x7f';
    default:
        break;
    }
    // Other keys without a character have numbers beyond those of characters.
    constexpr int firstNonCharacter = 0x01000000;
    const int key = event.key();
    return key > 0 && key < firstNonCharacter ? QChar::toLower(static_cast<char32_t>(key)) : 0;
}

} // namespace plenzo
