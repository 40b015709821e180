#include "ui/alarm/snooze_popup.h"

#include <QFontMetricsF>
#include <QStyledItemDelegate>
#include <cmath>
#include <cstddef>

namespace plenzo {

namespace {

// Of the pop-up's width, in pixels.
constexpr int iconMargin = 5;
constexpr int frameAndArrow = 36;

} // namespace

MarkedText markedText(const QString& text) {
    const qsizetype mark = text.indexOf('&');
    if (mark < 0 || mark + 1 >= text.size()) {
        return {.text = text};
    }
    const auto letter = static_cast<char32_t>(text.at(mark + 1).toLower().unicode());
    QString shown = text;
    const bool isAppended = mark > 0 && text.at(mark - 1) == '(' && text.endsWith(')');
    if (isAppended) {
        shown.truncate(mark - 1);
    } else {
        shown.remove(mark, 1);
    }
    return {.text = shown.trimmed(), .letter = letter};
}

void SnoozePopup::awakeFromNib() {
    // The toolkit gives what is selected for the name of such a view.
    setAccessibleDescription(accessibleName());
    // The toolkit's own for pop-ups takes its items for those of a menu, which no rule colours.
    setItemDelegate(new QStyledItemDelegate(this));
    for (int index = 0; index < count() && index < snoozeUnitsCount; ++index) {
        const MarkedText marked = markedText(itemText(index));
        m_unitLetters.at(static_cast<std::size_t>(index)) = marked.letter;
        setItemText(index, marked.text);
    }
}

int SnoozePopup::widthOfSelectedItem() const {
    const QIcon icon = itemIcon(currentIndex());
    const int iconWidth = icon.isNull() ? 0 : iconSize().width() + iconMargin;
    const double textWidth = QFontMetricsF(font()).horizontalAdvance(currentText());
    return iconWidth + static_cast<int>(std::ceil(textWidth)) + frameAndArrow;
}

} // namespace plenzo
