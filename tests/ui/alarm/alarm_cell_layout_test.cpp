#include "ui/alarm/alarm_cell_layout.h"

#include <gtest/gtest.h>

#include <ostream>

namespace plenzo {
namespace {

AlarmCellFrames designed() {
    return {.title = {30, 12, 266, 22},
            .date = {304, 12, 110, 22},
            .location = {30, 35, 384, 18},
            .others = {{424, 12, 22, 22}, {30, 56, 10, 4}}};
}

TEST(AnAlarmCell, GivesTheDateTheRoomThatItsTextNeedsAtTheTitlesExpense) {
    const AlarmCellFrames wide = laidOutCell(designed(), 149.2, false);
    EXPECT_EQ(wide.date, QRect(260, 12, 154, 22));
    EXPECT_EQ(wide.title, QRect(30, 12, 222, 22));
    const AlarmCellFrames narrow = laidOutCell(designed(), 56, false);
    EXPECT_EQ(narrow.date, QRect(354, 12, 60, 22));
    EXPECT_EQ(narrow.title, QRect(30, 12, 316, 22));
}

TEST(AnAlarmCell, EndsTheTitleWhereTheLocationEndsAtTheLatest) {
    AlarmCellFrames frames = designed();
    frames.location.setWidth(300);
    EXPECT_EQ(laidOutCell(frames, 56, false).title.right(), frames.location.right());
    EXPECT_EQ(laidOutCell(designed(), 5000, false).title.width(), 0);
}

TEST(AnAlarmCell, MovesItsLinesTogetherWithoutALocation) {
    const AlarmCellFrames frames = laidOutCell(designed(), 106, true);
    EXPECT_EQ(frames.title.y(), 18);
    EXPECT_EQ(frames.date.y(), 18);
    EXPECT_EQ(frames.others[0], QRect(424, 18, 22, 22));
    EXPECT_EQ(frames.others[1], QRect(30, 50, 10, 4)) << "what lies below moves up";
    EXPECT_EQ(frames.location, designed().location);
}

} // namespace
} // namespace plenzo
