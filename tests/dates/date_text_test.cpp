#include "dates/date_text.h"
#include "dates/local_dates.h"
#include "dates/number_text.h"
#include "dates/zone_name_exchange.h"

#include <cmath>

namespace plenzo {
namespace {

TEST(TheArchiveString, HoldsWholeSecondsAndTheZone) {
    const TimeZone berlin = zoneNamed("Europe/Berlin");
    EXPECT_EQ("600000000:Europe/Berlin", archiveToString(CalendarDate(Instant(6e8), berlin)));
    EXPECT_EQ("1:GMT", archiveToString(CalendarDate(Instant(0.6), TimeZone::gmt())));
    EXPECT_EQ("-86400:Universal", archiveToString(CalendarDate(Instant(-86400))));
    EXPECT_EQ("10000000000000:Universal", archiveToString(CalendarDate(Instant(1e13))));
}

TEST(TheArchiveString, IsReadBack) {
    const TimeZone tokyo = zoneNamed("Asia/Tokyo");
    const struct {
        const char* text;
        double seconds;
        const char* zone;
    } rows[] = {
        {"600000000:Europe/Berlin", 6e8, "Europe/Berlin"},
        {"0:Nowhere/Unknown", 0, "Asia/Tokyo"},
        {" -1.5e3x:UTC", -1500, "UTC"},
        {"abc:GMT", 0, "GMT"},
        {"nan:GMT", 0, "GMT"},
        {":", 0, "Asia/Tokyo"},
        {"1:UTC:UTC", 1, "Asia/Tokyo"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CalendarDate(Instant(row.seconds), zoneNamed(row.zone)),
                  unarchiveFromString(row.text, tokyo))
            << row.text;
    }
    for (const char* text : {"", "abc", "600000000", "1e14:UTC", "1e999:UTC", "-1e300:UTC"}) {
        EXPECT_FALSE(unarchiveFromString(text, tokyo).has_value()) << text;
    }
}

TEST(TheNetworkString, HasSixDecimals) {
    EXPECT_EQ("600000000.250000", networkString(Instant(600000000.25)));
    EXPECT_EQ("-0.500000", networkString(Instant(-0.5)));
    EXPECT_EQ(316U, networkString(Instant(1e308)).size());
    EXPECT_EQ(Instant(600000000.25), dateWithNetworkString("600000000.250000"));
    EXPECT_EQ(Instant(), dateWithNetworkString("inf"));
    EXPECT_EQ(Instant(-0.5), dateWithNetworkString("\t-.5 seconds"));
    EXPECT_EQ(Instant(), dateWithNetworkString("-+5"));
    EXPECT_FALSE(dateWithNetworkString("1e400").has_value());
}

TEST(TheRfc3339String, IsInUniversalWithMilliseconds) {
    EXPECT_EQ("2001-01-01T00:00:00.000Z", rfc3339String(Instant()));
    EXPECT_EQ("2024-02-29T22:59:59.250Z",
              rfc3339String(localDate("2024-02-29 23:59:59", "Europe/Berlin").instant() + 0.25));
    EXPECT_EQ("2000-12-31T23:59:59.500Z", rfc3339String(Instant(-0.5)));
    EXPECT_EQ("2001-01-01T00:00:00.999Z", rfc3339String(Instant(0.9996)));
    EXPECT_EQ("0000-01-01T00:00:00.000Z", rfc3339String(Instant(-63145526400.0)));
}

TEST(TheRfc3339String, KeepsEveryMillisecondThatWasWritten) {
    for (int milliseconds = 0; milliseconds < 1000; ++milliseconds) {
        const std::string digits = std::to_string(1000 + milliseconds).substr(1);
        const auto date = dateWithNetworkString("750000000." + digits);
        EXPECT_EQ("2024-10-07T13:20:00." + digits + "Z", rfc3339String(date.value_or(Instant())));
    }
}

TEST(TheRfc3339String, IsEmptyForYearsItCannotWrite) {
    EXPECT_EQ("9999-12-31T23:59:59.000Z",
              rfc3339String(localDate("9999-12-31 23:59:59", "UTC").instant()));
    EXPECT_EQ("", rfc3339String(localDate("9999-12-31 23:59:59", "UTC").instant() + 1));
    EXPECT_EQ("", rfc3339String(Instant(-63145526401.0)));
    EXPECT_EQ("", rfc3339String(Instant::distantFuture()));
    EXPECT_EQ("", rfc3339String(Instant(std::nan(""))));
}

TEST(Components, AreDescribedByTheDefinedOnes) {
    EXPECT_EQ("", DateComponents().description());
    EXPECT_EQ("12-3/14/2024 09:05:00", (DateComponents{.year = 2024,
                                                       .month = 3,
                                                       .day = 14,
                                                       .hour = 9,
                                                       .minute = 5,
                                                       .second = 0,
                                                       .weekOfYear = 12})
                                           .description());
    EXPECT_EQ("/14:-5", (DateComponents{.day = 14, .minute = -5}).description());
    EXPECT_EQ(24576U, static_cast<unsigned>(weekNumberUnit));
}

TEST(AnInteger, IsWrittenAsInTheLocale) {
    EXPECT_EQ("-1234567", stringFromInteger(-1234567, "en_US"));
    EXPECT_EQ("1234567", stringFromInteger(1234567, "de_DE"));
    EXPECT_EQ("1234567", stringFromInteger(1234567, "en_IN"));
    EXPECT_EQ("\u0661\u0662", stringFromInteger(12, "ar_EG"));
    EXPECT_EQ("12", stringFromInteger(12, "no such locale"));
}

TEST(AZoneName, IsTranslatedByAnyDictionaryOfNames) {
    const Dictionary names{{Key("Europe/Berlin"), "W. Europe Standard Time"}, {Key("Odd"), 3}};
    EXPECT_EQ("W. Europe Standard Time", translateMacWindowsTimeZoneName("Europe/Berlin", names));
    EXPECT_FALSE(translateMacWindowsTimeZoneName("Europe/Paris", names).has_value());
    EXPECT_FALSE(translateMacWindowsTimeZoneName("Odd", names).has_value());
}

} // namespace
} // namespace plenzo
