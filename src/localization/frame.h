#pragma once

namespace plenzo {

/// Width and height in device-independent pixels.
struct FrameSize {
    int width = 0;
    int height = 0;

    bool operator==(const FrameSize&) const = default;
};

/// Where a view lies in its container, in device-independent pixels from the container's left and
/// top edge, as if everything were read from left to right.
struct Frame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    bool operator==(const Frame&) const = default;
};

/// The frame seen in a mirror: the same distance from the container's other side.
[[nodiscard]] inline Frame mirrored(const Frame& frame, int containerWidth) {
    return {containerWidth - frame.right(), frame.y, frame.width, frame.height};
}

/// Whether the two share a row, however they lie horizontally.
[[nodiscard]] inline bool areSideBySide(const Frame& one, const Frame& other) {
    return one.y < other.bottom() && other.y < one.bottom();
}

} // namespace plenzo
