#include "localization/window_growth.h"

#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

/// What is kept of a wider distance that was designed.
constexpr int usualMargin = 20;
constexpr int usualGap = 8;

/// Enough for a view that takes but a small part of each growth.
constexpr int mostSteps = 200;
constexpr int mostGrowth = 4000;

std::vector<Frame> framesAt(const std::vector<ChangingView>& views, int width, int growth) {
    std::vector<Frame> frames;
    frames.reserve(views.size());
    for (const ChangingView& view : views) {
        frames.push_back(autoresized(view.frame, {width, 0}, {width + growth, 0}, view.mask));
    }
    return frames;
}

/// What is missing at this growth, in a fixed order; nothing is missing where it is 0 or less.
std::vector<int> shortages(const std::vector<ChangingView>& views, int width, int growth) {
    const std::vector<Frame> frames = framesAt(views, width, growth);
    std::vector<int> missing;
    for (std::size_t one = 0; one < views.size(); ++one) {
        const Frame& designed = views[one].designed;
        const int rightMargin = std::min(width - designed.right(), usualMargin);
        missing.push_back(views[one].neededWidth - frames[one].width);
        missing.push_back(frames[one].right() + rightMargin - (width + growth));
        missing.push_back(std::min(designed.x, usualMargin) - frames[one].x);
        for (std::size_t other = 0; other < views.size(); ++other) {
            const int gap = views[other].designed.x - designed.right();
            if (gap >= 0 && areSideBySide(designed, views[other].designed)) {
                missing.push_back(frames[one].right() + std::min(gap, usualGap) - frames[other].x);
            }
        }
    }
    return missing;
}

} // namespace

int growthNeeded(const std::vector<ChangingView>& views, int containerWidth) {
    const std::vector<int> atFirst = shortages(views, containerWidth, 0);
    const std::vector<int> atLast = shortages(views, containerWidth, mostGrowth);
    int growth = 0;
    for (int step = 0; step < mostSteps && growth < mostGrowth; ++step) {
        const std::vector<int> missing = shortages(views, containerWidth, growth);
        int worst = 0;
        for (std::size_t index = 0; index < missing.size(); ++index) {
            const bool isCurable = atLast[index] < atFirst[index];
            worst = isCurable ? std::max(worst, missing[index]) : worst;
        }
        if (worst == 0) {
            return growth;
        }
        growth += worst;
    }
    return std::min(growth, mostGrowth);
}

} // namespace plenzo
