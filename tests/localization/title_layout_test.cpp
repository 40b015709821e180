#include "localization/title_layout.h"
#include "localization/window_growth.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace plenzo {

namespace {

ChangingView view(const Frame& frame, const char* flexible, int tag = 0) {
    return {frame, frame, autoresizingMask(flexible), tag, false, 0};
}

/// Views of a row, each 20 high.
ChangingView inRow(int x, int width, const char* flexible, int tag = 0) {
    return view({x, 40, width, 20}, flexible, tag);
}

/// "X+WIDTH" of each.
std::string spans(const std::vector<ChangingView>& views) {
    std::string text;
    for (const ChangingView& changing : views) {
        text += std::to_string(changing.frame.x) + "+" + std::to_string(changing.frame.width) + " ";
    }
    return text;
}

std::string resized(std::vector<ChangingView> views, std::size_t control, int deltaX) {
    resizeControl(views, control, deltaX);
    return spans(views);
}

TEST(AControlsAnchor, FollowsFromItsMaskItsPictureAndItsTag) {
    struct Case {
        const char* flexible;
        bool hasImageLeft;
        int tag;
        bool isLeft;
    };
    const Case cases[] = {
        {"", false, 0, true},
        {"rightMargin", false, 0, true},
        {"leftMargin", false, 0, false},
        {"leftMargin width", false, 0, false},
        {"leftMargin", true, 0, true},
        {"rightMargin", false, 99, false},
        {"leftMargin", false, 99, true},
        {"leftMargin", true, 99, false},
        {"leftMargin", false, 100, false},
    };
    for (const Case& example : cases) {
        ChangingView control = inRow(0, 10, example.flexible, example.tag);
        control.hasImageLeft = example.hasImageLeft;
        EXPECT_EQ(isAnchoredLeft(control), example.isLeft)
            << example.flexible << ' ' << example.hasImageLeft << ' ' << example.tag;
    }
}

TEST(AResizedControl, MovesTheEdgeThatItDoesNotKeep) {
    EXPECT_EQ(resized({inRow(50, 40, "rightMargin")}, 0, 12), "50+52 ");
    EXPECT_EQ(resized({inRow(50, 40, "rightMargin")}, 0, -12), "50+28 ");
    EXPECT_EQ(resized({inRow(50, 40, "leftMargin")}, 0, 12), "38+52 ");
    EXPECT_EQ(resized({inRow(50, 40, "leftMargin")}, 0, -12), "62+28 ");
    EXPECT_EQ(resized({inRow(50, 40, "rightMargin", 99)}, 0, 12), "38+52 ");
    EXPECT_EQ(resized({inRow(50, 40, "")}, 0, -99), "50+0 ") << "never narrower than nothing";
}

TEST(AResizedControl, StaysCenteredBetweenFlexibleMargins) {
    const char* const centered = "leftMargin rightMargin";
    EXPECT_EQ(resized({inRow(50, 40, centered)}, 0, 12), "44+52 ");
    EXPECT_EQ(resized({inRow(50, 40, centered)}, 0, -11), "55+29 ");
    EXPECT_EQ(resized({inRow(10, 30, centered), inRow(50, 40, centered), inRow(100, 30, centered),
                       view({100, 0, 30, 20}, centered), inRow(140, 20, "leftMargin")},
                      1, 13),
              "4+30 44+53 107+30 100+30 140+20 ");
}

TEST(AResizedControl, MovesWhatLiesBesideIt) {
    const std::vector<ChangingView> fromLeft{
        inRow(10, 30, "rightMargin"), inRow(48, 30, "rightMargin"), inRow(86, 30, "rightMargin")};
    EXPECT_EQ(resized(fromLeft, 0, 7), "10+37 55+30 93+30 ");
    EXPECT_EQ(resized(fromLeft, 1, 7), "10+30 48+37 93+30 ") << "not what lies before it";
    EXPECT_EQ(resized(fromLeft, 0, -7), "10+23 41+30 79+30 ");

    const std::vector<ChangingView> fromRight{inRow(48, 30, "leftMargin"),
                                              inRow(86, 30, "leftMargin")};
    EXPECT_EQ(resized(fromRight, 1, 7), "41+30 79+37 ");
    EXPECT_EQ(resized(fromRight, 0, 7), "41+37 86+30 ");
}

TEST(AResizedControl, LeavesOtherRowsAndTheOtherSideAlone) {
    EXPECT_EQ(resized({inRow(10, 30, ""), view({48, 60, 30, 20}, ""), view({48, 20, 30, 20}, ""),
                       view({48, 59, 30, 20}, "")},
                      0, 7),
              "10+37 48+30 48+30 55+30 ")
        << "one pixel in common makes a row";
    EXPECT_EQ(resized({inRow(10, 30, ""), inRow(48, 30, "leftMargin"),
                       inRow(86, 30, "leftMargin rightMargin")},
                      0, 7),
              "10+37 48+30 86+30 ");
    EXPECT_EQ(resized({inRow(10, 30, ""), inRow(20, 60, "")}, 0, 7), "10+37 20+60 ")
        << "what lies on it is not beside it";
}

TEST(AResizedControl, SqueezesAViewOfFlexibleWidthThatShieldsWhatIsBehind) {
    const std::vector<ChangingView> views{inRow(10, 30, ""), inRow(48, 50, "width"),
                                          inRow(106, 30, ""), view({106, 20, 30, 20}, "")};
    EXPECT_EQ(resized(views, 0, 7), "10+37 55+43 106+30 106+30 ");
    EXPECT_EQ(resized(views, 0, -7), "10+23 41+57 106+30 106+30 ");
    EXPECT_EQ(resized({inRow(10, 50, "width"), inRow(68, 30, "leftMargin")}, 1, 7), "10+43 61+37 ");
    EXPECT_EQ(resized({inRow(10, 30, ""), inRow(48, 5, "width")}, 0, 7), "10+37 53+0 ");
    EXPECT_EQ(resized({view({0, 0, 30, 60}, ""), view({40, 0, 20, 20}, "width"),
                       view({70, 0, 20, 20}, ""), view({70, 30, 20, 20}, "")},
                      0, 7),
              "0+37 47+13 70+20 77+20 ")
        << "each row of its own";
}

/// The growth of a container of 200 with views in their designed frames and after a change.
int growth(std::vector<ChangingView> views, std::size_t control, int deltaX) {
    resizeControl(views, control, deltaX);
    return growthNeeded(views, 200);
}

TEST(AWindow, GrowsByWhatItsControlsLack) {
    EXPECT_EQ(growth({inRow(20, 100, "rightMargin")}, 0, 60), 0);
    EXPECT_EQ(growth({inRow(20, 100, "rightMargin")}, 0, 61), 1) << "its margin stays 20";
    EXPECT_EQ(growth({inRow(20, 170, "rightMargin")}, 0, 5), 5) << "or as small as it was";
    EXPECT_EQ(growth({inRow(80, 100, "leftMargin")}, 0, 70), 10);
    EXPECT_EQ(growth({inRow(50, 100, "leftMargin rightMargin")}, 0, 80), 20);
    EXPECT_EQ(growth({inRow(10, 50, ""), inRow(130, 50, "leftMargin")}, 0, 65), 3) << "a gap of 8";
    EXPECT_EQ(growth({inRow(10, 50, ""), inRow(64, 50, "leftMargin")}, 0, 1), 1) << "or less";
    EXPECT_EQ(growth({inRow(10, 50, ""), view({130, 0, 50, 20}, "leftMargin")}, 0, 80), 0);
    EXPECT_EQ(growth({inRow(10, 50, "")}, 0, -20), 0);
    EXPECT_EQ(growthNeeded({}, 200), 0);
}

TEST(AWindow, GrowsUntilAFlexibleWidthIsWhatItNeeds) {
    ChangingView label = inRow(20, 160, "width");
    label.neededWidth = 175;
    EXPECT_EQ(growthNeeded({label}, 200), 15);
    ChangingView quarter = inRow(50, 50, "leftMargin width rightMargin");
    quarter.neededWidth = 60;
    EXPECT_NEAR(growthNeeded({quarter}, 200), 40, 4) << "it has a quarter of each growth";
    label.neededWidth = 100;
    EXPECT_EQ(growthNeeded({label}, 200), 0);
}

TEST(AWindow, DoesNotGrowForWhatNoWidthCures) {
    EXPECT_EQ(growth({inRow(20, 50, "rightMargin", 99)}, 0, 60), 0) << "out at the left";
    EXPECT_EQ(growth({inRow(20, 50, ""), inRow(80, 50, "", 99)}, 1, 60), 0);
    ChangingView fixed = inRow(20, 50, "");
    fixed.neededWidth = 90;
    EXPECT_EQ(growthNeeded({fixed}, 200), 0);
}

} // namespace
} // namespace plenzo
