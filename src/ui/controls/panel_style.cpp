#include "ui/controls/panel_style.h"

#include "ui/controls/colors.h"

#include <QHash>

namespace plenzo {

namespace {

constexpr const char* rules = R"(
QPushButton, QLineEdit, QComboBox {
    border: 1px solid @edge; border-radius: 7px; color: @text; font-size: 13px;
}
QPushButton { background: @button; padding: 0 9px; min-height: 28px; }
QPushButton:hover { background: @hover; }
QPushButton:pressed { background: @pressed; }
QPushButton[isDefault="true"] { background: @accent; border-color: @accent; color: @onAccent; }
QPushButton[isDefault="true"]:hover { background: @accentHover; }
QPushButton[isDefault="true"]:pressed { background: @accentPressed; }
QLineEdit { background: @field; padding: 0 5px; selection-background-color: @accent;
    selection-color: @onAccent; }
QComboBox { background: @button; padding: @comboPadding; }
QComboBox:hover { background: @hover; }
QComboBox::drop-down { border: none; width: 24px; }
QComboBox::down-arrow { image: url(@arrow); width: 12px; height: 12px; }
QComboBox QAbstractItemView { background: @field; color: @text; border: 1px solid @edge;
    outline: none; }
QComboBox QAbstractItemView::item { min-height: 28px; padding: 0 8px; background: @field; }
QComboBox QAbstractItemView::item:selected { background: @accent; color: @onAccent; }
QPushButton:focus, QLineEdit:focus, QComboBox:focus { border: 2px solid @focus; }
QPushButton[isDefault="true"]:focus { border: 2px solid @focusOnAccent; }
QPushButton:disabled, QLineEdit:disabled, QComboBox:disabled { color: @disabled; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar::handle:vertical { background: @thumb; border-radius: 4px; min-height: 28px;
    margin: 2px; }
QScrollBar::handle:vertical:hover { background: @thumbHover; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QFrame#snoozeBar { border: none; border-top: 1px solid @hairline; }
)";

using Values = QHash<QString, QString>;

Values surfaces(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const QColor button =
        isDark(palette) ? blended(window, text, 0.12) : palette.color(QPalette::Base);
    return {{"text", text.name()},
            {"edge", blended(window, text, 0.24).name()},
            {"hairline", blended(window, text, 0.13).name()},
            {"button", button.name()},
            {"hover", blended(button, text, 0.06).name()},
            {"pressed", blended(button, text, 0.14).name()},
            {"thumb", blended(window, text, 0.25).name()},
            {"thumbHover", blended(window, text, 0.45).name()},
            {"field", palette.color(QPalette::Base).name()},
            {"disabled", palette.color(QPalette::Disabled, QPalette::WindowText).name()}};
}

Values accents(const QPalette& palette) {
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor text = readableOn(accent);
    return {{"accent", accent.name()},
            {"onAccent", text.name()},
            {"accentHover", blended(accent, text, 0.1).name()},
            {"accentPressed", blended(accent, text, 0.2).name()},
            {"focus", accent.name()},
            {"focusOnAccent", blended(accent, text, 0.55).name()}};
}

} // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() <
           palette.color(QPalette::WindowText).lightnessF();
}

QString panelStyleSheet(const QPalette& palette, const QString& iconFolder,
                        Qt::LayoutDirection direction) {
    Values values = surfaces(palette);
    values.insert(accents(palette));
    values.insert("comboPadding", direction == Qt::RightToLeft ? "0 9px 0 0" : "0 0 0 9px");
    values.insert("arrow", iconFolder + (isDark(palette) ? "/dark" : "/light") + "/chevron.svg");
    QString sheet;
    const QString text = QString::fromLatin1(rules);
    for (qsizetype from = 0; from < text.size();) {
        const qsizetype at = text.indexOf('@', from);
        sheet += text.mid(from, at < 0 ? -1 : at - from);
        if (at < 0) {
            break;
        }
        qsizetype end = at + 1;
        while (end < text.size() && text.at(end).isLetter()) {
            ++end;
        }
        sheet += values.value(text.mid(at + 1, end - at - 1));
        from = end;
    }
    return sheet;
}

} // namespace plenzo
