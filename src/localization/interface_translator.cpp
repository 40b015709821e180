#include "localization/interface_translator.h"

#include "localization/control_texts.h"
#include "localization/springs_and_struts.h"
#include "localization/window_growth.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

std::vector<ChangingView> changingViews(const SpringsAndStruts& layout) {
    std::vector<ChangingView> views;
    for (int index = 0; index < layout.count(); ++index) {
        const QWidget& view = *layout.itemAt(index)->widget();
        const Frame frame = layout.designedFrame(&view);
        views.push_back({frame, frame, layout.mask(&view), tagOf(view), hasImageLeft(view), 0});
    }
    return views;
}

void applyFrames(SpringsAndStruts& layout, const std::vector<ChangingView>& views) {
    for (int index = 0; index < layout.count(); ++index) {
        layout.setDesignedFrame(layout.itemAt(index)->widget(),
                                views[static_cast<std::size_t>(index)].frame);
    }
}

/// A pop-up may be designed for less than its widest item, and be widened when that is chosen; the
/// window has to have the room.
void reserveWidestItems(const SpringsAndStruts& layout, std::vector<ChangingView>& views) {
    for (int index = 0; index < layout.count(); ++index) {
        const QWidget& view = *layout.itemAt(index)->widget();
        Frame& frame = views[static_cast<std::size_t>(index)].frame;
        const int missing = view.sizeHint().width() - frame.width;
        if (qobject_cast<const QComboBox*>(&view) == nullptr || missing <= 0) {
            continue;
        }
        frame.x -= isAnchoredLeft(views[static_cast<std::size_t>(index)]) ? 0 : missing;
        frame.width += missing;
    }
}

/// What a text of its own makes a view need that does not follow its text.
int ownWidthNeeded(const QWidget& view, int wider) {
    const auto* const label = qobject_cast<const QLabel*>(&view);
    if (label != nullptr && label->wordWrap()) {
        return 0;
    }
    const bool isBox = qobject_cast<const QGroupBox*>(&view) != nullptr;
    if (wider <= 0 && !isBox) {
        return 0;
    }
    return isBox ? view.minimumSizeHint().width() : view.sizeHint().width();
}

/// A limit that holds the width moves along with it.
void widen(QWidget& window, int growth) {
    if (growth == 0) {
        return;
    }
    const int width = window.width() + growth;
    if (window.maximumWidth() < QWIDGETSIZE_MAX) {
        window.setMaximumWidth(std::min(window.maximumWidth() + growth, QWIDGETSIZE_MAX));
    }
    if (window.minimumWidth() > 0) {
        window.setMinimumWidth(window.minimumWidth() + growth);
    }
    window.resize(width, window.height());
}

} // namespace

void InterfaceTranslator::translate(QWidget& topLevel) const {
    for (QAction* action : topLevel.findChildren<QAction*>()) {
        translateTexts(m_dictionary, *action);
    }
    translateTexts(m_dictionary, topLevel);
    widen(topLevel, translateInside(topLevel));
    if (auto* const layout = SpringsAndStruts::of(&topLevel)) {
        layout->layOut();
    }
}

/// Returns by how much the view has to become wider.
int InterfaceTranslator::translateInside(QWidget& view) const {
    if (auto* const layout = SpringsAndStruts::of(&view)) {
        return translateViews(*layout);
    }
    int growth = 0;
    for (QWidget* inner : view.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        translateTexts(m_dictionary, *inner);
        growth = std::max(growth, translateInside(*inner));
    }
    const QLayout* const layout = view.layout();
    const int missing = layout != nullptr ? layout->minimumSize().width() - view.width() : 0;
    return std::max(growth, missing);
}

int InterfaceTranslator::translateViews(SpringsAndStruts& layout) const {
    std::vector<ChangingView> views = changingViews(layout);
    for (std::size_t index = 0; index < views.size(); ++index) {
        translateView(views, index, *layout.itemAt(static_cast<int>(index))->widget());
    }
    applyFrames(layout, views);
    reserveWidestItems(layout, views);
    return growthNeeded(views, layout.designedSize().width);
}

void InterfaceTranslator::translateView(std::vector<ChangingView>& views, std::size_t index,
                                        QWidget& view) const {
    const int wider = translateTexts(m_dictionary, view);
    const int growth = translateInside(view);
    ChangingView& changing = views[index];
    if (!changing.mask.has(AutoresizingMask::width)) {
        resizeControl(views, index, wider + growth);
        return;
    }
    // Its designed room counts as enough for what it was designed with.
    const int designedWidth = changing.designed.width;
    const int ownWidth = std::min(ownWidthNeeded(view, wider), designedWidth + std::max(wider, 0));
    changing.neededWidth = growth > 0 ? designedWidth + growth : ownWidth;
}

} // namespace plenzo
