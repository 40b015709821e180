#include "localization/control_texts.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QToolBox>
#include <QToolButton>
#include <QTreeView>
#include <QVariant>
#include <algorithm>
#include <string>

namespace plenzo {

namespace {

/// The texts that take no part in the width, of all kinds of views and actions.
constexpr const char* textProperties[] = {"windowTitle",
                                          "title",
                                          "toolTip",
                                          "statusTip",
                                          "whatsThis",
                                          "accessibleName",
                                          "accessibleDescription",
                                          "placeholderText",
                                          "specialValueText",
                                          "prefix",
                                          "suffix"};

class TextTranslator {
public:
    TextTranslator(const TranslationDictionary& dictionary, int tag)
        : m_dictionary(dictionary), m_tag(tag) {}

    /// Unchanged when there is no translation.
    [[nodiscard]] QString shown(const QString& text) const {
        const auto found = translation(m_dictionary, text.toStdString(), m_tag);
        return found ? QString::fromStdString(found->shown) : text;
    }
    [[nodiscard]] QString english(const QString& text) const {
        const auto found = translation(m_dictionary, text.toStdString(), m_tag);
        return found ? QString::fromStdString(found->english) : text;
    }
    void translateProperty(QObject& object, const char* name) const {
        const QVariant value = object.property(name);
        const QString text = value.typeId() == QMetaType::QString ? value.toString() : QString();
        const QString translated = shown(text);
        if (translated != text) {
            object.setProperty(name, translated);
        }
    }

private:
    const TranslationDictionary& m_dictionary;
    int m_tag;
};

int textWidth(const QWidget& view, const QString& text) {
    const QString plain =
        Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    return view.fontMetrics().size(Qt::TextShowMnemonic, plain).width();
}

template <class Control>
int translateTitle(const TextTranslator& translator, Control& control) {
    const QString english = translator.english(control.text());
    const QString shown = translator.shown(control.text());
    if (shown != control.text()) {
        control.setText(shown);
    }
    return textWidth(control, shown) - textWidth(control, english);
}

int translateItems(const TextTranslator& translator, QComboBox& box) {
    int widestEnglish = 0;
    int widestShown = 0;
    for (int index = 0; index < box.count(); ++index) {
        const QString text = box.itemText(index);
        widestEnglish = std::max(widestEnglish, textWidth(box, translator.english(text)));
        widestShown = std::max(widestShown, textWidth(box, translator.shown(text)));
        box.setItemText(index, translator.shown(text));
        const QString toolTip = box.itemData(index, Qt::ToolTipRole).toString();
        if (!toolTip.isEmpty()) {
            box.setItemData(index, translator.shown(toolTip), Qt::ToolTipRole);
        }
    }
    return widestShown - widestEnglish;
}

void translateTabs(const TextTranslator& translator, QTabWidget& tabs) {
    for (int index = 0; index < tabs.count(); ++index) {
        tabs.setTabText(index, translator.shown(tabs.tabText(index)));
        tabs.setTabToolTip(index, translator.shown(tabs.tabToolTip(index)));
    }
}

void translatePages(const TextTranslator& translator, QToolBox& pages) {
    for (int index = 0; index < pages.count(); ++index) {
        pages.setItemText(index, translator.shown(pages.itemText(index)));
    }
}

void translateHeader(const TextTranslator& translator, QAbstractItemModel& model,
                     Qt::Orientation orientation) {
    const int count = orientation == Qt::Horizontal ? model.columnCount() : model.rowCount();
    for (int section = 0; section < count; ++section) {
        const QString text = model.headerData(section, orientation).toString();
        const QString translated = translator.shown(text);
        if (translated != text) {
            model.setHeaderData(section, orientation, translated);
        }
    }
}

void translateHeaders(const TextTranslator& translator, const QAbstractItemView& view) {
    if (view.model() == nullptr) {
        return;
    }
    translateHeader(translator, *view.model(), Qt::Horizontal);
    if (qobject_cast<const QTableView*>(&view) != nullptr) {
        translateHeader(translator, *view.model(), Qt::Vertical);
    }
}

/// The texts of a view's parts, which have no width of their own in the interface.
void translateParts(const TextTranslator& translator, QWidget& view) {
    if (auto* const tabs = qobject_cast<QTabWidget*>(&view)) {
        translateTabs(translator, *tabs);
    } else if (auto* const pages = qobject_cast<QToolBox*>(&view)) {
        translatePages(translator, *pages);
    } else if (qobject_cast<QTableView*>(&view) != nullptr ||
               qobject_cast<QTreeView*>(&view) != nullptr) {
        translateHeaders(translator, static_cast<const QAbstractItemView&>(view));
    }
}

} // namespace

int tagOf(const QWidget& view) {
    return view.property("tag").toInt();
}

bool hasImageLeft(const QWidget& view) {
    if (qobject_cast<const QCheckBox*>(&view) != nullptr ||
        qobject_cast<const QRadioButton*>(&view) != nullptr) {
        return true;
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&view);
    return button != nullptr && !button->icon().isNull() && !button->text().isEmpty();
}

int translateTexts(const TranslationDictionary& dictionary, QWidget& view) {
    const TextTranslator translator(dictionary, tagOf(view));
    view.ensurePolished();
    for (const char* property : textProperties) {
        translator.translateProperty(view, property);
    }
    translateParts(translator, view);
    if (auto* const box = qobject_cast<QComboBox*>(&view)) {
        return translateItems(translator, *box);
    }
    if (auto* const label = qobject_cast<QLabel*>(&view)) {
        const int wider = translateTitle(translator, *label);
        return label->wordWrap() ? 0 : wider;
    }
    if (auto* const tool = qobject_cast<QToolButton*>(&view); tool && tool->defaultAction()) {
        return 0; // Its text is its action's.
    }
    auto* const button = qobject_cast<QAbstractButton*>(&view);
    return button != nullptr ? translateTitle(translator, *button) : 0;
}

void translateTexts(const TranslationDictionary& dictionary, QAction& action) {
    const TextTranslator translator(dictionary, action.property("tag").toInt());
    for (const char* property : {"toolTip", "statusTip", "whatsThis", "iconText", "text"}) {
        translator.translateProperty(action, property);
    }
}

} // namespace plenzo
