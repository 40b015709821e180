#include "model/alarm_order.h"
#include "model/title_order.h"
#include "support/instants.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {
namespace {

struct Properties {
    std::optional<double> fireSeconds;
    int type = 0;
    std::string title = {};
    std::int64_t fireDay = 0;
};

Alarm alarm(const Properties& properties) {
    Alarm result;
    if (properties.fireSeconds) {
        result.fireDate = CalendarDate(Instant(*properties.fireSeconds));
    }
    result.eventDict = std::make_shared<Dictionary>(
        Dictionary{{keys::type, properties.type}, {keys::title, properties.title}});
    result.fireDay = properties.fireDay;
    return result;
}

TEST(TheQueueOrder, GoesByDateTypeTitleAndDay) {
    const TitleOrder titles("en_US");
    const std::vector<Alarm> ascending{
        alarm({.fireSeconds = std::nullopt}),
        alarm({.fireSeconds = 0, .type = 9, .title = "z"}),
        alarm({.fireSeconds = 0.5, .type = 0, .title = "b", .fireDay = 7}),
        alarm({.fireSeconds = 0.5, .type = 1, .title = ""}),
        alarm({.fireSeconds = 0.5, .type = 1, .title = "apple"}),
        alarm({.fireSeconds = 0.5, .type = 1, .title = "Éclair"}),
        alarm({.fireSeconds = 0.5, .type = 1, .title = "Zebra", .fireDay = -1}),
        alarm({.fireSeconds = 0.5, .type = 1, .title = "zebra", .fireDay = 0}),
        alarm({.fireSeconds = 1, .type = 0}),
    };
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(compareFireDate(ascending[left], ascending[right], titles), left <=> right)
                << left << " and " << right;
        }
    }
}

TEST(TheOrderOfTitles, IsThatOfTheLanguageRegardlessOfCase) {
    EXPECT_TRUE(TitleOrder("de_DE").compare("Öl", "Zange") < 0);
    EXPECT_TRUE(TitleOrder("sv_SE").compare("Öl", "Zange") > 0);
    EXPECT_TRUE(TitleOrder("en_US").compare("APPLE", "apple") == 0);
    EXPECT_TRUE(TitleOrder("en_US").compare("resume", "résumé") < 0);
    EXPECT_TRUE(TitleOrder("no such locale").compare("a", "B") < 0);
}

TEST(TheOrderOfTitles, TakesAnyBytes) {
    const TitleOrder titles("en_US");
    const std::string invalid = "\xff\xfe\x80";
    EXPECT_TRUE(titles.compare(invalid, invalid) == 0);
    EXPECT_EQ(titles.compare(invalid, "a") < 0, titles.compare("a", invalid) > 0);
    const std::string huge(1 << 20, 'x');
    EXPECT_TRUE(titles.compare(huge, huge + "y") < 0);
}

} // namespace
} // namespace plenzo
