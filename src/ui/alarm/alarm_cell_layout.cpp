#include "ui/alarm/alarm_cell_layout.h"

#include <algorithm>
#include <cmath>

namespace plenzo {

namespace {

/// Beside the text of a date.
constexpr int dateMargin = 4;

/// How far the lines move together, in heights of the one that is missing.
constexpr double shiftPerLocationHeight = 0.35;

void widenDate(AlarmCellFrames& frames, double textWidth) {
    const int width = static_cast<int>(std::ceil(textWidth)) + dateMargin;
    const int growth = width - frames.date.width();
    frames.date.setLeft(frames.date.left() - growth);
    frames.title.setWidth(std::max(0, frames.title.width() - growth));
    frames.title.setRight(std::min(frames.title.right(), frames.location.right()));
}

/// Down what lies at the height of the location or above it, up what lies below.
void moveTogether(QRect& frame, const QRect& location, int shift) {
    frame.translate(0, frame.bottom() > location.bottom() ? -shift : shift);
}

} // namespace

AlarmCellFrames laidOutCell(const AlarmCellFrames& designed, double dateTextWidth,
                            bool locationIsEmpty) {
    AlarmCellFrames frames = designed;
    widenDate(frames, dateTextWidth);
    if (locationIsEmpty) {
        const int shift =
            static_cast<int>(std::lround(shiftPerLocationHeight * designed.location.height()));
        moveTogether(frames.title, designed.location, shift);
        moveTogether(frames.date, designed.location, shift);
        for (QRect& other : frames.others) {
            moveTogether(other, designed.location, shift);
        }
    }
    return frames;
}

} // namespace plenzo
