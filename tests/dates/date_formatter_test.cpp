#include "dates/date_formatter.h"
#include "dates/local_dates.h"

#include <cmath>

namespace plenzo {
namespace {

using enum FormatStyle;

DateFormatter formatterOf(const std::string& locale, const std::string& zone, FormatStyle dateStyle,
                          FormatStyle timeStyle) {
    DateFormatter formatter(locale, zoneNamed(zone));
    formatter.setDateStyle(dateStyle);
    formatter.setTimeStyle(timeStyle);
    return formatter;
}

TEST(ADateFormatter, WritesTheStylesOfTheLocale) {
    const struct {
        const char* locale;
        FormatStyle dateStyle;
        FormatStyle timeStyle;
        const char* text;
    } rows[] = {
        {"en_US", Short, None, "3/10/24"},
        {"en_US", Medium, None, "Mar 10, 2024"},
        {"en_US", Long, None, "March 10, 2024"},
        {"en_US", Full, None, "Sunday, March 10, 2024"},
        {"en_US", None, Short, "9:30 AM"},
        {"en_US", None, Medium, "9:30:15 AM"},
        {"en_US", Short, Short, "3/10/24, 9:30 AM"},
        {"en_US", Full, Short, "Sunday, March 10, 2024 at 9:30 AM"},
        {"en_US", None, None, ""},
        {"en_GB", Short, Short, "10/03/2024, 09:30"},
        {"de_DE.UTF-8", Full, Short, "Sonntag, 10. März 2024 um 09:30"},
        {"de-DE", Short, None, "10.03.24"},
        {"fr_FR", Full, None, "dimanche 10 mars 2024"},
        {"ja_JP", None, Short, "9:30"},
        {"th_TH", Long, None, "10 มีนาคม 2567"}, // the Buddhist year
        {"C", Full, None, "Sunday, March 10, 2024"},
        {"C.UTF-8", None, Short, "9:30 AM"},
    };
    const Instant date = localDate("2024-03-10 09:30:15", "Asia/Kathmandu").instant();
    for (const auto& row : rows) {
        const auto formatter =
            formatterOf(row.locale, "Asia/Kathmandu", row.dateStyle, row.timeStyle);
        EXPECT_EQ(row.text, formatter.stringFromDate(date)) << row.locale;
    }
}

TEST(ADateFormatter, ShowsTheClockOfItsZone) {
    auto formatter = formatterOf("en_GB", "Africa/Cairo", Short, Long);
    // Cairo has had summer time again since 2023, which older zone data does not know.
    EXPECT_EQ("15/07/2024, 09:00:00 EEST",
              formatter.stringFromDate(localDate("2024-07-15 06:00:00", "UTC").instant()));
    EXPECT_EQ("15/01/2024, 08:00:00 EET",
              formatter.stringFromDate(localDate("2024-01-15 06:00:00", "UTC").instant()));
    formatter.setTimeZone(zoneNamed("Asia/Kathmandu"));
    formatter.setTimeStyle(Full);
    EXPECT_EQ("15/07/2024, 11:45:00 +0545",
              formatter.stringFromDate(localDate("2024-07-15 06:00:00", "UTC").instant()));
}

TEST(ADateFormatter, IsProlepticGregorianLikeEveryDate) {
    const auto formatter = formatterOf("en_US", "UTC", Full, None);
    EXPECT_EQ("Thursday, October 14, 1582",
              formatter.stringFromDate(localDate("1582-10-14 12:00:00", "UTC").instant()));
    EXPECT_EQ("Wednesday, March 1, 2400",
              formatter.stringFromDate(localDate("2400-03-01 00:00:00", "UTC").instant()));
}

TEST(ADateFormatter, HasNoTextForWhatIsNoReadableDate) {
    for (const char* locale : {"en_US", "fa_IR", "ar_SA", "th_TH", "ja_JP@calendar=japanese",
                               "zh_CN@calendar=chinese", "he_IL@calendar=hebrew", "xx_@;=\xff"}) {
        const auto formatter = formatterOf(locale, "UTC", Full, Full);
        EXPECT_NE("", formatter.stringFromDate(Instant(-1e13))) << locale;
        EXPECT_NE("", formatter.stringFromDate(Instant(1e13))) << locale;
        for (const double seconds : {1e14, 1e300, -1e301, std::nan("")}) {
            EXPECT_EQ("", formatter.stringFromDate(Instant(seconds))) << locale;
        }
    }
    const auto formatter = formatterOf("en_US", "UTC", Short, None);
    EXPECT_EQ("1/1/01", formatter.stringForObjectValue(Value(Date{0})));
    EXPECT_FALSE(formatter.stringForObjectValue(Value("today")).has_value());
    EXPECT_FALSE(formatter.stringForObjectValue(Value(0)).has_value());
    EXPECT_FALSE(formatter.stringForObjectValue(Value()).has_value());
}

TEST(ADateFormatter, ReadsWhatItWrites) {
    const auto formatter = formatterOf("en_US", "Europe/Berlin", Short, Short);
    const Instant date = localDate("2024-07-15 21:05:00", "Europe/Berlin").instant();
    EXPECT_EQ(date, formatter.dateFromString(formatter.stringFromDate(date)));
    const auto german = formatterOf("de_DE", "Europe/Berlin", Full, None);
    const Instant midnight = localDate("2024-03-10 00:00:00", "Europe/Berlin").instant();
    EXPECT_EQ(midnight, german.dateFromString("Sonntag, 10. März 2024"));
}

TEST(ADateFormatter, ReadsTwoDigitYearsAs1950To2049) {
    const auto formatter = formatterOf("en_US", "UTC", Short, None);
    EXPECT_EQ(localDate("1950-01-01 00:00:00", "UTC").instant(),
              formatter.dateFromString("1/1/50"));
    EXPECT_EQ(localDate("2049-12-31 00:00:00", "UTC").instant(),
              formatter.dateFromString("12/31/49"));
    EXPECT_EQ(1950, DateFormatter::twoDigitCutOffYear);
}

TEST(ADateFormatter, RefusesOtherTexts) {
    const auto formatter = formatterOf("en_US", "UTC", Short, None);
    for (const std::string& text :
         {std::string(), std::string("2/30/24"), std::string("1/1/24 x"), std::string("today"),
          std::string("1/1/99999999999999"), std::string("\xff\xfe"), std::string(100'000, '1')}) {
        EXPECT_FALSE(formatter.dateFromString(text).has_value()) << text.substr(0, 20);
    }
    EXPECT_FALSE(formatterOf("en_US", "UTC", None, None).dateFromString("").has_value());
}

TEST(TheTextOfATime, EndsWithTheZoneOnRequest) {
    const CalendarDate berlin = localDate("2024-07-15 09:00:00", "Europe/Berlin");
    EXPECT_EQ("Monday, July 15, 2024 at 9:00 AM CEST",
              timeToString(berlin, Full, Short, true, "en_US"));
    EXPECT_EQ("9:00 AM", timeToString(berlin, None, Short, false, "en_US"));
    EXPECT_EQ("09:00 GMT",
              timeToString(localDate("2024-07-15 09:00:00", "GMT"), None, Short, true, "de_DE"));
}

} // namespace
} // namespace plenzo
