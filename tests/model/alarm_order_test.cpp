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
    std::int64_t fireDay = 0;
    bool holiday = false;
    int type = 0;
    bool allDay = false;
    std::optional<double> fireSeconds = {};
    int priority = 0;
    std::string title = {};
};

Alarm alarm(const Properties& properties) {
    Alarm result;
    if (properties.fireSeconds) {
        result.fireDate = CalendarDate(Instant(*properties.fireSeconds));
    }
    result.eventDict =
        std::make_shared<Dictionary>(Dictionary{{keys::type, properties.type},
                                                {keys::title, properties.title},
                                                {keys::holiday, properties.holiday},
                                                {keys::allDay, properties.allDay},
                                                {keys::priority, properties.priority}});
    result.fireDay = properties.fireDay;
    return result;
}

class TwoOrders : public testing::Test {
protected:
    using Order = std::weak_ordering(const Alarm&, const Alarm&, const TitleOrder&);

    void expectAscending(const std::vector<Alarm>& alarms, Order order) const {
        for (std::size_t left = 0; left < alarms.size(); ++left) {
            for (std::size_t right = 0; right < alarms.size(); ++right) {
                EXPECT_EQ(order(alarms[left], alarms[right], titles), left <=> right)
                    << left << " and " << right;
            }
        }
    }
    void expectEqual(const Properties& left, const Properties& right, Order order) const {
        EXPECT_TRUE(std::is_eq(order(alarm(left), alarm(right), titles)));
    }

    const TitleOrder titles{"en_US"};
};

using TheQueueOrder = TwoOrders;

TEST_F(TheQueueOrder, GoesByDateTypeTitleAndDay) {
    expectAscending(
        {
            alarm({.fireDay = 9, .type = 9, .fireSeconds = std::nullopt, .title = "z"}),
            alarm({.type = 9, .fireSeconds = 0, .title = "z"}),
            alarm({.fireDay = 7, .type = 0, .fireSeconds = 0.5, .title = "b"}),
            alarm({.type = 1, .fireSeconds = 0.5, .title = ""}),
            alarm({.type = 1, .fireSeconds = 0.5, .title = "apple"}),
            alarm({.type = 1, .fireSeconds = 0.5, .title = "Éclair"}),
            alarm({.fireDay = -1, .type = 1, .fireSeconds = 0.5, .title = "Zebra"}),
            alarm({.fireDay = 0, .type = 1, .fireSeconds = 0.5, .title = "zebra"}),
            alarm({.type = 0, .fireSeconds = 1}),
        },
        compareFireDate);
}

TEST_F(TheQueueOrder, SeesNoHolidaysDaysAndPriorities) {
    expectEqual({.holiday = true, .allDay = true, .priority = 1}, {.priority = 9}, compareFireDate);
}

using TheDisplayOrder = TwoOrders;

TEST_F(TheDisplayOrder, GoesByDayHolidayTypeAllDayDatePriorityAndTitle) {
    expectAscending(
        {
            alarm({.fireDay = -1, .type = 1, .fireSeconds = 9, .priority = 9, .title = "z"}),
            alarm({.holiday = true, .type = 1, .fireSeconds = 9, .title = "z"}),
            alarm({.type = 0, .allDay = true, .fireSeconds = 9, .title = "z"}),
            alarm({.type = 0, .fireSeconds = 9, .title = "z"}),
            alarm({.type = 1, .allDay = true, .fireSeconds = 5, .title = "z"}),
            alarm({.type = 1, .fireSeconds = std::nullopt, .title = "z"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 1, .title = "z"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 9, .title = "y"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 99, .title = "x"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 0, .title = "Apple"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 100, .title = "banana"}),
            alarm({.type = 1, .fireSeconds = 1, .priority = 101, .title = ""}),
            alarm({.type = 1, .fireSeconds = 1.5, .priority = 1, .title = ""}),
            alarm({.fireDay = 1, .holiday = true, .fireSeconds = 0}),
        },
        compare);
}

TEST_F(TheDisplayOrder, TakesNoPriorityForTheLowestAndMissingKeysForNone) {
    expectEqual({.priority = 0}, {.priority = 100}, compare);
    expectEqual({.title = "Zoe"}, {.title = "zoe"}, compare);
    const Alarm heading = alarmHeaderFromString("Today");
    EXPECT_TRUE(std::is_eq(compare(heading, alarm({}), titles)));
    EXPECT_TRUE(std::is_eq(compareFireDate(heading, alarm({}), titles)));
}

TEST(TheOrderOfTitles, IsThatOfTheLanguageRegardlessOfCase) {
    EXPECT_TRUE(std::is_lt(TitleOrder("de_DE").compare("Öl", "Zange")));
    EXPECT_TRUE(std::is_gt(TitleOrder("sv_SE").compare("Öl", "Zange")));
    EXPECT_TRUE(std::is_eq(TitleOrder("en_US").compare("APPLE", "apple")));
    EXPECT_TRUE(std::is_lt(TitleOrder("en_US").compare("resume", "résumé")));
    EXPECT_TRUE(std::is_lt(TitleOrder("no such locale").compare("a", "B")));
}

TEST(TheOrderOfTitles, TakesAnyBytes) {
    const TitleOrder titles("en_US");
    const std::string invalid = "\xff\xfe\x80";
    EXPECT_TRUE(std::is_eq(titles.compare(invalid, "\uFFFD\uFFFD\uFFFD")));
    EXPECT_TRUE(std::is_gt(titles.compare(invalid, "a")));
    const std::string huge(1 << 20, 'x');
    EXPECT_TRUE(std::is_lt(titles.compare(huge, huge + "y")));
}

} // namespace
} // namespace plenzo
