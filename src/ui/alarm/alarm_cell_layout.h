#pragma once

#include <QRect>
#include <vector>

namespace plenzo {

/// Where the parts of an alarm's row lie. The cell's origin is its upper left corner.
struct AlarmCellFrames {
    QRect title;
    QRect date;
    QRect location;
    /// What else moves with the lines of text: check box, buttons.
    std::vector<QRect> others;
};

/// The frames of a row, of those that were designed: the date as wide as its text, at the expense
/// of the title; without a location what remains moves together.
[[nodiscard]] AlarmCellFrames laidOutCell(const AlarmCellFrames& designed, double dateTextWidth,
                                          bool locationIsEmpty);

} // namespace plenzo
