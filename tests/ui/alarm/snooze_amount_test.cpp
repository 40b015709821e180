#include "ui/alarm/snooze_amount.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace plenzo {
namespace {

TEST(ASnoozeAmount, TakesTheLargestUnitThatDividesTheSeconds) {
    const struct {
        std::int64_t seconds;
        SnoozeAmount amount;
    } cases[]{
        {300, {5, SnoozeUnits::Minutes}},
        {5400, {90, SnoozeUnits::Minutes}},
        {7200, {2, SnoozeUnits::Hours}},
        {172800, {2, SnoozeUnits::Days}},
        {90000, {25, SnoozeUnits::Hours}},
        {90, {1, SnoozeUnits::Minutes}},
        {30, {0, SnoozeUnits::Minutes}},
        {-600, {10, SnoozeUnits::MinutesBeforeStart}},
        {-90, {1, SnoozeUnits::MinutesBeforeStart}},
        {0, {0, SnoozeUnits::MinutesBeforeStart}},
    };
    for (const auto& [seconds, amount] : cases) {
        EXPECT_EQ(snoozeAmountFromSeconds(seconds), amount) << seconds;
    }
}

TEST(ASnoozeAmount, IsCountedFromNowOrBackFromTheStart) {
    EXPECT_EQ((SnoozeAmount{5, SnoozeUnits::Minutes}).offsetSeconds(), 300);
    EXPECT_EQ((SnoozeAmount{2, SnoozeUnits::Days}).offsetSeconds(), 172800);
    EXPECT_EQ((SnoozeAmount{10, SnoozeUnits::MinutesBeforeStart}).offsetSeconds(), -600);
}

TEST(ASnoozeAmount, StaysWithinWhatAClockCanShow) {
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(snoozeAmountFromSeconds(least).offsetSeconds(), -1e6 * 86400);
    EXPECT_EQ((SnoozeAmount{most, SnoozeUnits::Days}).offsetSeconds(), 1e6 * 86400);
    EXPECT_EQ(withDigit(99'999'999, 9), 999'999'999);
    EXPECT_EQ(withDigit(999'999'999, 1), 999'999'999);
}

} // namespace
} // namespace plenzo
