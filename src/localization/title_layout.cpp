#include "localization/title_layout.h"

#include <algorithm>

namespace plenzo {

namespace {

int distance(const Frame& row, const Frame& frame, bool anchorLeft) {
    return anchorLeft ? frame.x - row.right() : row.x - frame.right();
}

std::vector<ChangingView*> viewsBeside(std::vector<ChangingView>& views, const Frame& row,
                                       bool anchorLeft) {
    std::vector<ChangingView*> beside;
    for (ChangingView& view : views) {
        if (areSideBySide(row, view.frame) && distance(row, view.frame, anchorLeft) >= 0) {
            beside.push_back(&view);
        }
    }
    std::ranges::stable_sort(beside, {}, [&](const ChangingView* view) {
        return distance(row, view->frame, anchorLeft);
    });
    return beside;
}

bool keepsToThisSide(const ChangingView& view, bool anchorLeft) {
    using Mask = AutoresizingMask;
    if (view.mask.isCentered()) {
        return false;
    }
    return anchorLeft ? !view.mask.has(Mask::leftMargin) : !view.mask.has(Mask::rightMargin);
}

bool isAnchoredRightByMask(const ChangingView& view) {
    return view.mask.has(AutoresizingMask::leftMargin);
}

void squeeze(Frame& frame, bool anchorLeft, int deltaX) {
    const int squeezed = std::min(deltaX, frame.width);
    frame.x += anchorLeft ? squeezed : 0;
    frame.width -= squeezed;
}

/// What is centered as well makes room at both sides.
void moveCentered(std::vector<ChangingView>& views, const Frame& row, int leftDelta,
                  int rightDelta) {
    for (ChangingView& view : views) {
        if (!view.mask.isCentered() || !areSideBySide(row, view.frame)) {
            continue;
        }
        if (distance(row, view.frame, true) >= 0) {
            view.frame.x += rightDelta;
        } else if (distance(row, view.frame, false) >= 0) {
            view.frame.x -= leftDelta;
        }
    }
}

void resizeCentered(std::vector<ChangingView>& views, std::size_t control, int deltaX) {
    const Frame row = views[control].frame;
    const int leftDelta = deltaX / 2;
    const int rightDelta = deltaX - leftDelta;
    views[control].frame.x -= leftDelta;
    views[control].frame.width += deltaX;
    moveCentered(views, row, leftDelta, rightDelta);
    adjustViewsInRect(views, row, false, leftDelta);
    adjustViewsInRect(views, row, true, rightDelta);
}

} // namespace

bool isAnchoredLeft(const ChangingView& view) {
    const bool isLeft = view.hasImageLeft || !isAnchoredRightByMask(view);
    return view.tag == invertedAnchorTag ? !isLeft : isLeft;
}

void resizeControl(std::vector<ChangingView>& views, std::size_t control, int deltaX) {
    ChangingView& view = views[control];
    const int change = std::max(deltaX, -view.frame.width);
    if (view.mask.isCentered()) {
        resizeCentered(views, control, change);
        return;
    }
    const Frame row = view.frame;
    const bool anchorLeft = isAnchoredLeft(view);
    view.frame.x -= anchorLeft ? 0 : change;
    view.frame.width += change;
    adjustViewsInRect(views, row, anchorLeft, change);
}

void adjustViewsInRect(std::vector<ChangingView>& views, const Frame& row, bool anchorLeft,
                       int deltaX) {
    std::vector<Frame> shields;
    for (ChangingView* view : viewsBeside(views, row, anchorLeft)) {
        const auto isShielding = [view](const Frame& shield) {
            return areSideBySide(shield, view->frame);
        };
        if (std::ranges::any_of(shields, isShielding)) {
            continue;
        }
        if (view->mask.has(AutoresizingMask::width)) {
            shields.push_back(view->frame);
            squeeze(view->frame, anchorLeft, deltaX);
        } else if (keepsToThisSide(*view, anchorLeft)) {
            view->frame.x += anchorLeft ? deltaX : -deltaX;
        }
    }
}

} // namespace plenzo
