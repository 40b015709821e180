#include "localization/autoresizing.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace plenzo {

void PrintTo(const Frame& frame, std::ostream* stream) {
    *stream << frame.x << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height;
}

namespace {

TEST(AnAutoresizingMask, IsReadFromTheWordsForWhatIsFlexible) {
    EXPECT_EQ(autoresizingMask("leftMargin").flexible, 1U);
    EXPECT_EQ(autoresizingMask("width").flexible, 2U);
    EXPECT_EQ(autoresizingMask("rightMargin").flexible, 4U);
    EXPECT_EQ(autoresizingMask("topMargin").flexible, 8U);
    EXPECT_EQ(autoresizingMask("height").flexible, 16U);
    EXPECT_EQ(autoresizingMask("bottomMargin").flexible, 32U);
    EXPECT_EQ(autoresizingMask(" height  leftMargin\nrightMargin ").flexible, 21U);
    EXPECT_EQ(autoresizingMask("Width widths wid width,").flexible, 0U);
    EXPECT_EQ(autoresizingMask("").flexible, 0U);
}

/// A view from 10 to 40 in a container of 100.
struct Case {
    std::string flexible;
    int containerWidth;
    int x;
    int width;
};

const Case cases[] = {
    {"", 150, 10, 30},
    {"rightMargin", 150, 10, 30},
    {"leftMargin", 150, 60, 30},
    {"leftMargin", 50, -40, 30},
    {"width", 150, 10, 80},
    {"width", 71, 10, 1},
    {"width", 60, 10, 0},
    {"leftMargin rightMargin", 170, 20, 30},
    {"leftMargin rightMargin", 101, 10, 30},
    {"leftMargin rightMargin", 105, 11, 30},
    {"leftMargin rightMargin", 93, 9, 30},
    {"leftMargin width", 140, 20, 60},
    {"leftMargin width", 101, 10, 31},
    {"width rightMargin", 190, 10, 60},
    {"leftMargin width rightMargin", 200, 20, 60},
    {"leftMargin width rightMargin", 101, 10, 30},
    {"leftMargin width rightMargin", 103, 10, 31},
    {"leftMargin width rightMargin", 0, 0, 0},
};

TEST(Autoresizing, SharesADifferenceAmongTheFlexiblePartsByTheirLengths) {
    for (const Case& example : cases) {
        const Frame resized = autoresized({10, 5, 30, 20}, {100, 50}, {example.containerWidth, 50},
                                          autoresizingMask(example.flexible));
        EXPECT_EQ(resized, (Frame{example.x, 5, example.width, 20}))
            << example.flexible << " in " << example.containerWidth;
    }
}

TEST(Autoresizing, DoesVerticallyTheSame) {
    const auto inHeight = [](const char* flexible, int height) {
        return autoresized({5, 10, 20, 30}, {50, 100}, {50, height}, autoresizingMask(flexible));
    };
    EXPECT_EQ(inHeight("bottomMargin", 150), (Frame{5, 10, 20, 30}));
    EXPECT_EQ(inHeight("topMargin", 150), (Frame{5, 60, 20, 30}));
    EXPECT_EQ(inHeight("height", 150), (Frame{5, 10, 20, 80}));
    EXPECT_EQ(inHeight("topMargin height bottomMargin", 200), (Frame{5, 20, 20, 60}));
    EXPECT_EQ(inHeight("leftMargin width", 150), (Frame{5, 10, 20, 30}));
}

TEST(Autoresizing, SharesEquallyAmongPartsWithoutLength) {
    const auto mask = autoresizingMask("leftMargin rightMargin");
    EXPECT_EQ(autoresized({0, 0, 100, 1}, {100, 1}, {120, 1}, mask), (Frame{10, 0, 100, 1}));
    EXPECT_EQ(autoresized({0, 0, 0, 1}, {0, 1}, {30, 1}, autoresizingMask("width")),
              (Frame{0, 0, 30, 1}));
}

TEST(Autoresizing, KeepsViewsTouchingThatTouch) {
    const auto both = autoresizingMask("leftMargin width rightMargin");
    for (int width = 0; width < 500; ++width) {
        int edge = 0;
        for (int x = 0; x < 97; x += 1 + x % 7) {
            const Frame frame = autoresized({x, 0, 1 + x % 7, 1}, {97 + 7, 1}, {width, 1}, both);
            ASSERT_EQ(frame.x, edge) << x << " in " << width;
            edge = frame.right();
        }
    }
}

TEST(AMirroredFrame, IsAsFarFromTheOtherSide) {
    EXPECT_EQ(mirrored({10, 5, 30, 20}, 100), (Frame{60, 5, 30, 20}));
    EXPECT_EQ(mirrored(mirrored({-3, 5, 30, 20}, 17), 17), (Frame{-3, 5, 30, 20}));
}

} // namespace
} // namespace plenzo
