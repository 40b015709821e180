#include "ui/alarm/alarm_row_colors.h"
#include "ui/controls/colors.h"
#include "ui/controls/palettes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

namespace plenzo {
namespace {

/// A colour of every corner and face of the cube.
std::vector<Color> everyKindOfColor() {
    std::vector<Color> colors;
    constexpr std::array<std::uint8_t, 4> components{0, 90, 160, 255};
    for (const std::uint8_t red : components) {
        for (const std::uint8_t green : components) {
            for (const std::uint8_t blue : components) {
                colors.push_back({red, green, blue, 255});
            }
        }
    }
    return colors;
}

QPalette darkPalette() {
    return palette(Brightness::Dark, Contrast::Usual);
}

TEST(AContrastRatio, IsThatOfTheGuidelines) {
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 1e-6);
    EXPECT_NEAR(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
    EXPECT_EQ(contrastRatio(Qt::red, Qt::red), 1);
}

TEST(ASelectedRow, CanBeSeenAndReadInEveryCalendarsColor) {
    for (const Color& color : everyKindOfColor()) {
        AlarmRow row;
        row.color = color;
        for (const RowState state : {RowState::Selected, RowState::SelectedInactive}) {
            for (const QPalette& palette : {QPalette(), darkPalette()}) {
                const AlarmRowColors colors = alarmRowColors(row, state, palette);
                const QColor muted = mutedText(colors.text, colors.background, 0.35);
                EXPECT_GE(contrastRatio(colors.text, colors.background), readableContrast);
                EXPECT_GE(contrastRatio(muted, colors.background), readableContrast);
                EXPECT_GE(contrastRatio(colors.background, palette.color(QPalette::Base)), 1.25);
            }
        }
    }
}

TEST(ASelectedRow, FadesTowardsWhiteWithoutTheKeyboard) {
    EXPECT_EQ(inactiveHighlightColor(QColor(0, 100, 200)).rgb(), qRgb(179, 209, 239));
    EXPECT_EQ(inactiveHighlightColor(Qt::white).rgb(), qRgb(255, 255, 255));
}

TEST(ASelectedRow, IsNoLampInADarkWindowWithoutTheKeyboard) {
    AlarmRow row;
    row.color = Color{255, 255, 255, 255};
    const QColor background =
        alarmRowColors(row, RowState::SelectedInactive, darkPalette()).background;
    EXPECT_LT(background.lightnessF(), 0.5);
    EXPECT_NE(background, darkPalette().color(QPalette::Base));
}

} // namespace
} // namespace plenzo
