#include "dates/local_dates.h"
#include "dates/relative_date_formatter.h"

#include <map>

namespace plenzo {
namespace {

using enum FormatStyle;
using Strings = std::map<std::string, std::string, std::less<>>;

const Strings english{{"Today", "Today"},
                      {"Tomorrow", "Tomorrow"},
                      {"Yesterday", "Yesterday"},
                      {"%1$@ at %2$@", "%1$@ at %2$@"}};

/// In Kathmandu, where it is 10 March 2024, 12:00, with relative dates.
RelativeDateFormatter formatterOf(FormatStyle dateStyle, FormatStyle timeStyle,
                                  const Strings& strings = english,
                                  const std::string& locale = "en_US") {
    const auto localized = [strings](std::string_view key) {
        const auto found = strings.find(key);
        return found != strings.end() ? found->second : std::string();
    };
    const auto now = [] { return localDate("2024-03-10 12:00:00", "Asia/Kathmandu").instant(); };
    RelativeDateFormatter formatter(locale, zoneNamed("Asia/Kathmandu"), localized, now);
    formatter.setUseRelativeDates(true);
    formatter.setDateStyle(dateStyle);
    formatter.setTimeStyle(timeStyle);
    return formatter;
}

std::string textOf(const RelativeDateFormatter& formatter, const std::string& local) {
    return formatter.stringFromDate(localDate(local, "Asia/Kathmandu").instant());
}

TEST(ARelativeDateFormatter, HasWordsForTheDaysAroundThePresentOne) {
    const auto formatter = formatterOf(Short, None);
    EXPECT_EQ("Yesterday", textOf(formatter, "2024-03-09 00:00:00"));
    EXPECT_EQ("Yesterday", textOf(formatter, "2024-03-09 23:59:00"));
    EXPECT_EQ("Today", textOf(formatter, "2024-03-10 00:00:00"));
    EXPECT_EQ("Tomorrow", textOf(formatter, "2024-03-11 23:59:59"));
    EXPECT_EQ("3/12/24", textOf(formatter, "2024-03-12 00:00:00"));
    EXPECT_EQ("3/8/24", textOf(formatter, "2024-03-08 23:59:59"));
}

TEST(ARelativeDateFormatter, CountsFromItsBaseDateInItsZone) {
    auto formatter = formatterOf(Short, None);
    formatter.setBaseDate(localDate("2023-12-31 18:30:00", "UTC").instant()); // 1 January there
    EXPECT_EQ("Yesterday", textOf(formatter, "2023-12-31 23:00:00"));
    EXPECT_EQ("Today", textOf(formatter, "2024-01-01 23:00:00"));
    formatter.setTimeZone(TimeZone::universal());
    EXPECT_EQ("Today", textOf(formatter, "2023-12-31 23:00:00"));
    formatter.setBaseDate(Instant::distantFuture());
    EXPECT_EQ("12/31/23", textOf(formatter, "2023-12-31 23:00:00"));
    formatter.setBaseDate(std::nullopt);
    EXPECT_EQ("Today", textOf(formatter, "2024-03-10 12:00:00"));
    EXPECT_EQ("", formatter.stringFromDate(Instant::distantFuture()));
}

TEST(ARelativeDateFormatter, LowerCasesTheWordBeforeATimeOnly) {
    auto formatter = formatterOf(Short, Short);
    EXPECT_EQ("Today at 9:30 AM", textOf(formatter, "2024-03-10 09:30:00"));
    formatter.setLowercase(true);
    EXPECT_EQ("today at 9:30 AM", textOf(formatter, "2024-03-10 09:30:00"));
    EXPECT_EQ("3/12/24, 9:30 AM", textOf(formatter, "2024-03-12 09:30:00"));
    EXPECT_EQ(Short, formatter.dateStyle());
    formatter.setTimeStyle(None);
    EXPECT_EQ("Today", textOf(formatter, "2024-03-10 09:30:00"));
}

TEST(ARelativeDateFormatter, IsAnOrdinaryOneWithoutADateStyleOrRelativeDates) {
    EXPECT_EQ("9:30 AM", textOf(formatterOf(None, Short), "2024-03-10 09:30:00"));
    auto formatter = formatterOf(Short, Short);
    formatter.setUseRelativeDates(false);
    EXPECT_EQ("3/10/24, 9:30 AM", textOf(formatter, "2024-03-10 09:30:00"));
}

TEST(ARelativeDateFormatter, TakesItsTextsFromTheStringTable) {
    const Strings german{{"Today", "Heute"}, {"%1$@ at %2$@", "um %2$@ Uhr %1$@, 100%"}};
    auto formatter = formatterOf(Medium, Short, german, "de_DE");
    formatter.setLowercase(true);
    EXPECT_EQ("um 09:30 Uhr heute, 100%", textOf(formatter, "2024-03-10 09:30:00"));
    EXPECT_EQ("11.03.2024, 09:30", textOf(formatter, "2024-03-11 09:30:00"));
    EXPECT_EQ("10.03.2024, 09:30", textOf(formatterOf(Medium, Short, {{"Today", "Heute"}}, "de_DE"),
                                          "2024-03-10 09:30:00"));
    EXPECT_EQ("Bugün", textOf(formatterOf(Medium, None, {{"Today", "Bugün"}}, "tr_TR"),
                              "2024-03-10 09:30:00"));
}

TEST(ARelativeDateFormatter, WritesDatesOutOfRecords) {
    const auto formatter = formatterOf(Short, None);
    const Date date = localDate("2024-03-10 09:30:00", "Asia/Kathmandu").instant().date();
    EXPECT_EQ("Today", formatter.stringForObjectValue(Value(date)));
    EXPECT_FALSE(formatter.stringForObjectValue(Value("Today")).has_value());
}

} // namespace
} // namespace plenzo
