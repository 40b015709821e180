#include "ui/controls/window_placement.h"

#include <gtest/gtest.h>

#include <ostream>

namespace plenzo {
namespace {

const QRect right(1920, 30, 1280, 770);

TEST(AWindow, AppearsInTheCornerOfItsScreen) {
    EXPECT_EQ(cornerPlacement({460, 120}, right, Qt::LeftToRight), QRect(2708, 62, 460, 120));
    EXPECT_EQ(cornerPlacement({460, 120}, right, Qt::RightToLeft), QRect(1952, 62, 460, 120));
}

TEST(AWindow, IsNeverOffItsScreen) {
    EXPECT_EQ(cornerPlacement({2000, 900}, right, Qt::LeftToRight), right);
    EXPECT_EQ(keptWithin({3000, 700, 460, 300}, right), QRect(2740, 500, 460, 300));
    EXPECT_EQ(keptWithin({0, 0, 460, 300}, right), QRect(1920, 30, 460, 300));
    EXPECT_EQ(keptWithin({2000, 100, 460, 300}, right), QRect(2000, 100, 460, 300));
}

} // namespace
} // namespace plenzo
