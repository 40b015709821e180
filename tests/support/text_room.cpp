#include "support/text_room.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

/// A text in the room that its widget's style leaves it.
struct ShownText {
    QString text;
    QSize needed;
    QSize room;
};

using Texts = std::vector<ShownText>;

QSize neededFor(const QWidget& widget, const QString& text) {
    const QFontMetrics metrics = widget.fontMetrics();
    // The font's own height counts lines that most texts do not have.
    const int height = text.contains('\n') ? metrics.size(Qt::TextShowMnemonic, text).height()
                                           : metrics.tightBoundingRect(text).height();
    return {metrics.size(Qt::TextShowMnemonic, text).width(), height};
}

ShownText shownIn(const QWidget& widget, const QString& text, const QSize& room) {
    return {text, neededFor(widget, text), room};
}

QSize contents(QStyle::SubElement element, const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    option.icon = button.icon();
    option.iconSize = button.iconSize();
    QSize room = button.style()->subElementRect(element, &option, &button).size();
    if (!button.icon().isNull()) {
        room.rwidth() -= button.iconSize().width() + 4;
    }
    return room;
}

Texts textsOf(const QLabel& label) {
    const int margins = 2 * label.margin() + (label.indent() > 0 ? label.indent() : 0);
    const QSize room = label.contentsRect().size() - QSize(margins, margins);
    if (label.wordWrap()) {
        const QRect wrapped = label.fontMetrics().boundingRect(
            QRect(0, 0, room.width(), QWIDGETSIZE_MAX), Qt::TextWordWrap, label.text());
        return {{label.text(), wrapped.size(), room}};
    }
    return {shownIn(label, label.text(), room)};
}

Texts textsOf(const QAbstractButton& button) {
    if (qobject_cast<const QCheckBox*>(&button) != nullptr) {
        return {shownIn(button, button.text(), contents(QStyle::SE_CheckBoxContents, button))};
    }
    if (qobject_cast<const QRadioButton*>(&button) != nullptr) {
        return {shownIn(button, button.text(), contents(QStyle::SE_RadioButtonContents, button))};
    }
    if (qobject_cast<const QPushButton*>(&button) != nullptr) {
        return {shownIn(button, button.text(), contents(QStyle::SE_PushButtonContents, button))};
    }
    return {{button.text(), button.sizeHint(), button.size()}};
}

Texts textsOf(const QComboBox& box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    const QSize room =
        box.style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
            .size();
    Texts texts;
    for (int index = 0; index < box.count(); ++index) {
        const int iconWidth = box.itemIcon(index).isNull() ? 0 : box.iconSize().width() + 4;
        texts.push_back(shownIn(box, box.itemText(index), room - QSize(iconWidth, 0)));
    }
    return texts;
}

Texts textsOf(const QLineEdit& field) {
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    const QRect rectangle =
        field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    // The field's own margin at both sides.
    return {shownIn(field, field.placeholderText(),
                    rectangle.marginsRemoved(field.textMargins()).size() - QSize(4, 0))};
}

/// Bars and boxes know best what they need.
Texts textsOf(const QTabBar& tabs) {
    Texts texts;
    for (int index = 0; index < tabs.count(); ++index) {
        const QRect tab = tabs.tabRect(index);
        const QRect seen = tab.intersected(tabs.parentWidget()->rect().translated(-tabs.pos()));
        const QSize needed = neededFor(tabs, tabs.tabText(index));
        texts.push_back({tabs.tabText(index),
                         {std::max(needed.width(), tab.width()), needed.height()},
                         seen.size()});
    }
    return texts;
}

Texts textsOf(const QGroupBox& box) {
    return {{box.title(), {box.minimumSizeHint().width(), 0}, box.size()}};
}

Texts textsOf(const QHeaderView& header) {
    Texts texts;
    for (int section = 0; section < header.count() && header.model() != nullptr; ++section) {
        const QString text = header.model()->headerData(section, header.orientation()).toString();
        const int needed = header.sectionSizeHint(section);
        texts.push_back({text, {needed, 0}, {header.sectionSize(section), header.height()}});
    }
    return header.orientation() == Qt::Horizontal ? texts : Texts();
}

Texts textsOf(const QWidget& widget) {
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
        return textsOf(*label);
    }
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
        return textsOf(*button);
    }
    if (const auto* const box = qobject_cast<const QComboBox*>(&widget)) {
        return textsOf(*box);
    }
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget)) {
        return textsOf(*field);
    }
    if (const auto* const tabs = qobject_cast<const QTabBar*>(&widget)) {
        return textsOf(*tabs);
    }
    if (const auto* const box = qobject_cast<const QGroupBox*>(&widget)) {
        return textsOf(*box);
    }
    const auto* const header = qobject_cast<const QHeaderView*>(&widget);
    return header != nullptr ? textsOf(*header) : Texts();
}

/// A label that asks for no width ends in "…" by itself.
bool isElided(const QWidget& widget) {
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr && !label->wordWrap() && label->minimumSizeHint().width() == 0;
}

bool isCut(const ShownText& shown) {
    return !shown.text.isEmpty() && (shown.needed.width() > shown.room.width() ||
                                     shown.needed.height() > shown.room.height());
}

std::string described(const QWidget& widget, const QString& text, const std::string& what) {
    return widget.objectName().toStdString() + " \"" + text.toStdString() + "\" " + what;
}

std::string sizeText(const QSize& size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

bool hasText(const QWidget& widget) {
    for (const ShownText& shown : textsOf(widget)) {
        if (!shown.text.isEmpty()) {
            return true;
        }
    }
    return false;
}

/// Of those of the interface file, not of what a widget is made of.
std::vector<QWidget*> viewsWithText(const QWidget& container) {
    std::vector<QWidget*> views;
    for (QWidget* view : container.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (hasText(*view) && !view->isHidden() && !view->isWindow()) {
            views.push_back(view);
        }
    }
    return views;
}

void addMisplaced(const QWidget& container, std::vector<std::string>& found) {
    const std::vector<QWidget*> views = viewsWithText(container);
    for (std::size_t one = 0; one < views.size(); ++one) {
        if (!container.rect().contains(views[one]->geometry())) {
            found.push_back(
                described(*views[one], textsOf(*views[one]).front().text, "sticks out"));
        }
        for (std::size_t other = one + 1; other < views.size(); ++other) {
            if (views[one]->geometry().intersects(views[other]->geometry())) {
                found.push_back(described(*views[one], textsOf(*views[one]).front().text,
                                          "lies on " + views[other]->objectName().toStdString()));
            }
        }
    }
}

void addCut(const QWidget& widget, std::vector<std::string>& found) {
    if (isElided(widget)) {
        return;
    }
    for (const ShownText& shown : textsOf(widget)) {
        if (isCut(shown)) {
            found.push_back(
                described(widget, shown.text,
                          "has " + sizeText(shown.room) + ", needs " + sizeText(shown.needed)));
        }
    }
}

} // namespace

std::vector<std::string> cutTexts(QWidget& window) {
    window.ensurePolished();
    window.show();
    QApplication::processEvents();
    std::vector<std::string> found;
    addCut(window, found);
    addMisplaced(window, found);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        addCut(*widget, found);
        addMisplaced(*widget, found);
    }
    window.hide();
    return found;
}

} // namespace plenzo
