// What must hold of the orders of any alarms, whatever their records hold.

#include "model/alarm_order.h"
#include "model/random_alarms.h"
#include "model/relations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace plenzo {
namespace {

constexpr std::size_t alarmCount = 120;
constexpr const char* locales[] = {"en_US", "de_DE", "sv_SE", "cs_CZ",        "fr_CA",
                                   "th_TH", "ja_JP", "ko_KR", "no such place"};

using AlarmOrder = std::weak_ordering (*)(const Alarm&, const Alarm&, const TitleOrder&);
constexpr AlarmOrder orders[] = {compare, compareFireDate};

class TheOrdersOfAnyAlarms : public testing::TestWithParam<std::uint32_t> {
protected:
    [[nodiscard]] Relations relations(AlarmOrder order) const {
        return {alarms.size(), [&](std::size_t left, std::size_t right) {
                    return order(alarms[left], alarms[right], titles);
                }};
    }
    /// Whether the display order sees nothing that the queue order does not look at.
    [[nodiscard]] bool differInNothingElse(std::size_t left, std::size_t right) const {
        const auto priority = [&](std::size_t number) {
            const std::int64_t given = alarms[number].eventInteger(keys::priority);
            return given == 0 ? 100 : given;
        };
        const auto isSet = [&](std::size_t number, const Key& key) {
            return alarms[number].eventBool(key);
        };
        return priority(left) == priority(right) &&
               isSet(left, keys::holiday) == isSet(right, keys::holiday) &&
               isSet(left, keys::allDay) == isSet(right, keys::allDay);
    }

    const TitleOrder titles{locales[GetParam() % std::size(locales)]};
    const std::vector<Alarm> alarms = RandomAlarms(GetParam()).alikeAlarms(alarmCount);
};

TEST_P(TheOrdersOfAnyAlarms, AreStrictWeakOrders) {
    for (const AlarmOrder order : orders) {
        const Relations found = relations(order);
        EXPECT_EQ(found.fault(), "");
        EXPECT_GE(found.tieCount(), alarmCount / 10) << "the alarms are too unlike for a test";
    }
}

TEST_P(TheOrdersOfAnyAlarms, AgreeOnTies) {
    const Relations display = relations(compare);
    const Relations queue = relations(compareFireDate);
    for (std::size_t left = 0; left < alarms.size(); ++left) {
        for (std::size_t right = 0; right < alarms.size(); ++right) {
            const bool expected = queue.sign(left, right) == 0 && differInNothingElse(left, right);
            EXPECT_EQ(display.sign(left, right) == 0, expected) << left << " and " << right;
        }
    }
}

TEST_P(TheOrdersOfAnyAlarms, SortThemWithoutInversions) {
    for (const AlarmOrder order : orders) {
        std::vector<Alarm> sorted = alarms;
        std::sort(sorted.begin(), sorted.end(), [&](const Alarm& left, const Alarm& right) {
            return std::is_lt(order(left, right, titles));
        });
        for (std::size_t earlier = 0; earlier < sorted.size(); ++earlier) {
            for (std::size_t later = earlier + 1; later < sorted.size(); ++later) {
                EXPECT_FALSE(std::is_gt(order(sorted[earlier], sorted[later], titles)))
                    << earlier << " and " << later;
            }
        }
    }
}

TEST_P(TheOrdersOfAnyAlarms, DoNotTellACopyFromItsOriginal) {
    for (const Alarm& alarm : alarms) {
        Alarm copy = alarm;
        if (alarm.eventDict) {
            copy.eventDict = std::make_shared<Dictionary>(*alarm.eventDict);
        }
        copy.carryover = !alarm.carryover;
        EXPECT_TRUE(std::is_eq(compare(alarm, copy, titles)));
        EXPECT_TRUE(std::is_eq(compareFireDate(alarm, copy, titles)));
    }
}

INSTANTIATE_TEST_SUITE_P(Seed, TheOrdersOfAnyAlarms, testing::Range<std::uint32_t>(1, 10),
                         testing::PrintToStringParamName());

TEST(TheOrderOfTitles, IsAStrictWeakOneInEveryLanguage) {
    for (std::uint32_t seed = 1; seed <= std::size(locales) * 2; ++seed) {
        const TitleOrder order(locales[seed % std::size(locales)]);
        RandomAlarms random(seed);
        std::vector<std::string> titles(100);
        std::generate(titles.begin(), titles.end(), [&] { return random.title(); });
        const Relations found(titles.size(), [&](std::size_t left, std::size_t right) {
            return order.compare(titles[left], titles[right]);
        });
        EXPECT_EQ(found.fault(), "") << "seed " << seed << ": " << testing::PrintToString(titles);
    }
}

} // namespace
} // namespace plenzo
