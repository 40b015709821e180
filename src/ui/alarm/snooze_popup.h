#pragma once

#include "ui/alarm/snooze_amount.h"

#include <QComboBox>
#include <array>

namespace plenzo {

/// The pop-up of the snooze units, as wide as what is selected. An "&" in an item's text of the
/// interface file stands before the letter that chooses it and is not shown.
class SnoozePopup final : public QComboBox {
public:
    using QComboBox::QComboBox;

    /// Has to be called once, when the interface file is loaded and translated.
    void awakeFromNib();
    /// By units, in lower case; 0 where an item has none.
    [[nodiscard]] const std::array<char32_t, snoozeUnitsCount>& unitLetters() const {
        return m_unitLetters;
    }

    [[nodiscard]] int widthOfSelectedItem() const;

private:
    std::array<char32_t, snoozeUnitsCount> m_unitLetters{};
};

/// The text without the mark, and the marked letter in lower case, 0 when nothing is marked. A
/// letter that is only there to be marked, "(&M)" at the end, goes.
struct MarkedText {
    QString text;
    char32_t letter = 0;
};
[[nodiscard]] MarkedText markedText(const QString& text);

} // namespace plenzo
