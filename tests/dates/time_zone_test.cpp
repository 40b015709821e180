#include "dates/local_dates.h"

#include <string>

namespace plenzo {
namespace {

TEST(AZone, IsUniversalByItsName) {
    for (const char* name : {"Universal", "universal", "UTC", "utc", "GMT"}) {
        EXPECT_TRUE(zoneNamed(name).isUniversal()) << name;
    }
    // It has the same offset for ever, but is not the zone GMT.
    EXPECT_FALSE(zoneNamed("gmt").isUniversal());
    EXPECT_FALSE(zoneNamed("Europe/London").isUniversal());
    EXPECT_EQ(TimeZone(), TimeZone::universal());
    EXPECT_NE(TimeZone::gmt(), TimeZone::universal());
    EXPECT_EQ("GMT", TimeZone::gmt().name());
    EXPECT_EQ("utc", zoneNamed("utc").name());
}

TEST(AZone, IsFoundByTheNamesOfTheZoneDataOnly) {
    EXPECT_EQ(zoneNamed("Europe/Berlin"), zoneNamed("Europe/Berlin"));
    const std::string absurdlyLong(1'000'000, 'a');
    for (const std::string name :
         {"", "Nowhere/Unknown", "Europe", "europe/berlin", "Europe/Berlin ", "/etc/localtime",
          "../../../../etc/localtime", "Europe/./Berlin", "README.md", "libc:localtime",
          "/dev/zero", "Europe//Berlin\n", "\xff\xfe"}) {
        EXPECT_FALSE(TimeZone::named(name).has_value()) << name;
    }
    EXPECT_FALSE(TimeZone::named(absurdlyLong).has_value());
    EXPECT_FALSE(TimeZone::named(std::string_view("Europe/Berlin\0x", 15)).has_value());
}

TEST(AZone, IsStillFoundAfterThousandsOfUnknownNames) {
    for (int number = 0; number < 5000; ++number) {
        EXPECT_FALSE(TimeZone::named("Unknown/" + std::to_string(number)).has_value());
    }
    EXPECT_EQ(20700, zoneNamed("Asia/Kathmandu").offsetSeconds(Instant()));
}

TEST(AZone, IsEquivalentToAnotherOnADateOfEqualOffsets) {
    const TimeZone berlin = zoneNamed("Europe/Berlin");
    const TimeZone london = zoneNamed("Europe/London");
    const TimeZone casablanca = zoneNamed("Africa/Casablanca");
    const Instant winter = localDate("2024-01-15 12:00:00", "UTC").instant();
    const Instant summer = localDate("2024-07-15 12:00:00", "UTC").instant();

    EXPECT_TRUE(london.isEquivalentTo(TimeZone::gmt(), winter));
    EXPECT_FALSE(london.isEquivalentTo(TimeZone::gmt(), summer));
    EXPECT_TRUE(casablanca.isEquivalentTo(berlin, winter));
    EXPECT_TRUE(casablanca.isEquivalentTo(london, summer));
}

TEST(AZone, AbbreviatesItsNameForTheDate) {
    const Instant winter = localDate("2024-01-15 12:00:00", "UTC").instant();
    const Instant summer = localDate("2024-07-15 12:00:00", "UTC").instant();
    const struct {
        const char* zone;
        const char* winter;
        const char* summer;
    } rows[] = {
        {"Europe/Berlin", "CET", "CEST"},   {"Europe/Dublin", "GMT", "IST"},
        {"Asia/Kolkata", "IST", "IST"},     {"Asia/Kathmandu", "+0545", "+0545"},
        {"Antarctica/Troll", "+00", "+02"}, {"America/Sao_Paulo", "-03", "-03"},
        {"Universal", "UTC", "UTC"},        {"GMT", "GMT", "GMT"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.winter, zoneNamed(row.zone).abbreviation(winter)) << row.zone;
        EXPECT_EQ(row.summer, zoneNamed(row.zone).abbreviation(summer)) << row.zone;
    }
}

} // namespace
} // namespace plenzo
