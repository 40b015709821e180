#pragma once

#include "localization/frame.h"

#include <string_view>

namespace plenzo {

/// What of a view and of the room around it changes with the size of its container.
struct AutoresizingMask {
    static constexpr unsigned leftMargin = 1;
    static constexpr unsigned width = 2;
    static constexpr unsigned rightMargin = 4;
    static constexpr unsigned topMargin = 8;
    static constexpr unsigned height = 16;
    static constexpr unsigned bottomMargin = 32;

    unsigned flexible = 0;

    [[nodiscard]] bool has(unsigned part) const { return (flexible & part) != 0; }
    [[nodiscard]] bool isCentered() const { return has(leftMargin) && has(rightMargin); }
    bool operator==(const AutoresizingMask&) const = default;
};

/// Reads the words "leftMargin width rightMargin topMargin height bottomMargin", of which each that
/// stands there is flexible; the order is free and other words count for nothing.
[[nodiscard]] AutoresizingMask autoresizingMask(std::string_view words);

/// The frame that a view has in a container of the size `now`, when it was designed as `designed`
/// in one of the size `designedFor`. The flexible parts share the difference in proportion to their
/// designed lengths, equally when all are empty; edges are rounded to whole pixels, so that views
/// that touch go on touching. Without a flexible part the left or top edge stays. A length never
/// becomes negative, a margin may.
[[nodiscard]] Frame autoresized(const Frame& designed, FrameSize designedFor, FrameSize now,
                                AutoresizingMask mask);

} // namespace plenzo
