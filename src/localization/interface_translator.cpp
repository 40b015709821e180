#include "localization/interface_translator.h"

#include "localization/control_texts.h"
#include "localization/springs_and_struts.h"
#include "localization/window_growth.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLayout>
#include <QTabBar>
#include <QTabWidget>
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

/// What the title of a box or the tabs of pages, which are no title of a control, make them need.
int widthOfParts(const QWidget& view) {
    if (const auto* const tabs = qobject_cast<const QTabWidget*>(&view)) {
        return tabs->tabBar()->sizeHint().width();
    }
    return qobject_cast<const QGroupBox*>(&view) != nullptr ? view.minimumSizeHint().width() : 0;
}

int missingWidth(const QWidget& view) {
    const bool isOfToolkit = view.layout() != nullptr && SpringsAndStruts::of(&view) == nullptr;
    return isOfToolkit ? view.layout()->minimumSize().width() - view.width() : 0;
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
    widen(topLevel, std::max({translateInside(topLevel), missingWidth(topLevel), 0}));
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
    return growth;
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
    const int partsInEnglish = widthOfParts(view);
    const int wider = translateTexts(m_dictionary, view);
    const int growth = std::max(translateInside(view), missingWidth(view));
    ChangingView& changing = views[index];
    const int designedWidth = changing.designed.width;
    // What was designed with too little keeps it.
    const int parts = widthOfParts(view) - std::max(designedWidth, partsInEnglish);
    const int inside = std::max(growth, parts);
    if (!changing.mask.has(AutoresizingMask::width)) {
        resizeControl(views, index, wider + std::max(inside, 0));
    } else if (inside > 0) {
        changing.neededWidth = designedWidth + inside;
    } else if (wider > 0) {
        changing.neededWidth = std::min(view.sizeHint().width(), designedWidth + wider);
    }
}

} // namespace plenzo
