#include "propertylist/format_string.h"

#include <gtest/gtest.h>

namespace plenzo {
namespace {

TEST(AFormatString, FillsItsPlacesInTheirOrderOrByTheirNumbers) {
    EXPECT_EQ(filledFormat("%@, %@", {"one", "two"}), "one, two");
    EXPECT_EQ(filledFormat("%2$@ at %1$@, %1$@", {"one", "two"}), "two at one, one");
    EXPECT_EQ(filledFormat("100%% of %@", {"it"}), "100% of it");
}

TEST(AFormatString, TakesWhatIsFilledInAsItStands) {
    EXPECT_EQ(filledFormat("%@-%@", {"%@", "%2$@"}), "%@-%2$@");
}

TEST(AFormatString, HasNothingWhereNoTextIsGivenAndKeepsWhatIsNoPlace) {
    EXPECT_EQ(filledFormat("%@|%@|%3$@", {"one"}), "one||");
    EXPECT_EQ(filledFormat("%", {"one"}), "%");
    EXPECT_EQ(filledFormat("%d %1$s %0$@ %1$", {"one"}), "%d %1$s %0$@ %1$");
}

} // namespace
} // namespace plenzo
