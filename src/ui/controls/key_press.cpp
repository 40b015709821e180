#include "ui/controls/key_press.h"

#include <QChar>
#include <array>
#include <string_view>

namespace plenzo {

namespace {

bool isLatin(int key) {
    constexpr int firstNonLatin = 0x0250;
    return key < firstNonLatin;
}

/// What stands on that key, by its number in X11 and Wayland, of an American keyboard.
char32_t latinCharacterAt(quint32 scanCode) {
    struct Row {
        quint32 firstScanCode;
        std::u32string_view characters;
    };
    constexpr std::array<Row, 3> rows{
        {{24, U"qwertyuiop"}, {38, U"asdfghjkl"}, {52, U"zxcvbnm,./"}}};
    for (const Row& row : rows) {
        if (scanCode >= row.firstScanCode && scanCode - row.firstScanCode < row.characters.size()) {
            return row.characters[scanCode - row.firstScanCode];
        }
    }
    return 0;
}

} // namespace

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
    if (key <= 0 || key >= firstNonCharacter) {
        return 0;
    }
    const char32_t latin = event.modifiers().testFlag(Qt::ControlModifier) && !isLatin(key)
                               ? latinCharacterAt(event.nativeScanCode())
                               : 0;
    return latin != 0 ? latin : QChar::toLower(static_cast<char32_t>(key));
}

} // namespace plenzo
