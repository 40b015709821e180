#include "dates/instant.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace plenzo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(AnInstant, CountsFromTheReferenceDateAndFrom1970) {
    EXPECT_EQ(Instant(), Instant::since1970(978307200));
    EXPECT_EQ(1.5, Instant::since1970(978307201.5).secondsSinceReferenceDate());
    EXPECT_EQ(-978307200, Instant::since1970(0).secondsSinceReferenceDate());
    EXPECT_EQ(Date{12.25}, Instant(Date{12.25}).date());
    EXPECT_EQ(-90, (Instant(10) - 100.0) - Instant(0));
}

TEST(AnInstant, IsOrderedWhateverItHolds) {
    std::vector<Instant> instants{Instant(infinity), Instant(1),         Instant(notANumber),
                                  Instant(-0.5),     Instant(-infinity), Instant(notANumber)};
    std::sort(instants.begin(), instants.end());

    EXPECT_TRUE(std::isnan(instants.at(0).secondsSinceReferenceDate()));
    EXPECT_EQ(instants.at(0), instants.at(1));
    EXPECT_EQ(Instant(-infinity), instants.at(2));
    EXPECT_EQ(Instant(-0.5), instants.at(3));
    EXPECT_EQ(Instant::distantFuture(), instants.at(5));
    EXPECT_EQ(Instant(0.0), Instant(-0.0));
}

TEST(AnInstant, IsReadableInAFiniteRange) {
    EXPECT_TRUE(Instant(9.9e12).isReadable());
    EXPECT_TRUE(Instant(-9.9e12).isReadable());
    for (const double seconds : {1.1e13, -1.1e13, 1e300, infinity, -infinity, notANumber}) {
        EXPECT_FALSE(Instant(seconds).isReadable()) << seconds;
        EXPECT_EQ(std::isfinite(seconds), Instant(seconds).isFinite()) << seconds;
    }
}

TEST(ComparingDates, IsFalseWithoutADate) {
    const std::optional<Instant> none;
    EXPECT_TRUE(isNewerThan(Instant(2), Instant(1)));
    EXPECT_FALSE(isNewerThan(Instant(2), Instant(2)));
    EXPECT_TRUE(isNewerOrEqualTo(Instant(2), Instant(2)));
    EXPECT_FALSE(isNewerOrEqualTo(Instant(1), Instant(2)));
    EXPECT_FALSE(isNewerThan(none, Instant(-5)));
    EXPECT_FALSE(isNewerThan(Instant(5), none));
    EXPECT_FALSE(isNewerOrEqualTo(none, none));
}

TEST(TruncatingADate, CutsTowardTheReferenceDate) {
    EXPECT_EQ(Instant(1), truncatedDate(Instant(1.9)));
    EXPECT_EQ(Instant(-1), truncatedDate(Instant(-1.9)));
}

TEST(AJulianDate, CountsDaysFromNoon) {
    EXPECT_EQ(2440587.5, julianDate(Instant::since1970(0)));
    EXPECT_EQ(2451545.0, julianDate(Instant::since1970(946728000))); // 2000-01-01 12:00:00
    EXPECT_EQ(Instant::since1970(946728000), dateFromJulianDate(2451545.0));
    EXPECT_EQ(Instant::since1970(-43200), dateFromJulianDate(2440587.0));
}

} // namespace
} // namespace plenzo
