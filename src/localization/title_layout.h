#pragma once

#include "localization/autoresizing.h"
#include "localization/frame.h"

#include <cstddef>
#include <vector>

namespace plenzo {

/// One of the views of a container while their texts change.
struct ChangingView {
    Frame designed;
    Frame frame;
    AutoresizingMask mask;
    int tag = 0;
    /// A button whose picture, or box to tick, is left of its title.
    bool hasImageLeft = false;
    /// Below this width something is cut; 0 when nothing is known.
    int neededWidth = 0;
};

/// A control with this tag keeps the edge that it would else move.
constexpr int invertedAnchorTag = 99;

/// Whether the view keeps its left edge when its width changes, or its right one.
[[nodiscard]] bool isAnchoredLeft(const ChangingView& view);

/// Makes a control wider, or narrower by a negative `deltaX`: at the edge that it does not keep, at
/// both when both of its margins are flexible. The views beside it follow.
void resizeControl(std::vector<ChangingView>& views, std::size_t control, int deltaX);

/// Moves what lies beside `row`, right of it when `anchorLeft`, else left of it, by `deltaX` away
/// from it. What is as wide as its container allows is squeezed instead, and shields what lies
/// behind it; what keeps to the container's other side, or its middle, stays.
void adjustViewsInRect(std::vector<ChangingView>& views, const Frame& row, bool anchorLeft,
                       int deltaX);

} // namespace plenzo
