#include "host/ical/identifiers.h"
#include "host/records/repeat_text.h"

#include <gtest/gtest.h>

namespace plenzo {

TEST(ARepeatText, SaysTheRuleInWords) {
    const std::pair<const char*, const char*> rows[] = {
        {"FREQ=DAILY", "every day"},
        {"FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,FR;UNTIL=20261231T230000Z",
         "every 2 weeks on Monday and Friday, until 31 December 2026"},
        {"FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", "every week on weekdays"},
        {"FREQ=MONTHLY;BYDAY=2TU,-1SU", "every month on the second Tuesday and the last Sunday"},
        {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1", "every month on the last weekday"},
        {"FREQ=MONTHLY;BYDAY=SA,SU;BYSETPOS=1", "every month on the first Saturday or Sunday"},
        {"FREQ=MONTHLY;BYMONTHDAY=1,15,-1;COUNT=10",
         "every month on day 1, day 15 and the last day, 10 times"},
        {"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=-2", "every year on the second to last day in February"},
        {"FREQ=YEARLY;BYDAY=20MO", "every year on the number 20 Monday"},
        {"FREQ=HOURLY;COUNT=1", "every hour, once"},
        {"FREQ=NEVER", ""}};
    for (const auto& [rule, text] : rows) {
        EXPECT_EQ(repeatText({rule}), text) << rule;
    }
    EXPECT_EQ(repeatText({"FREQ=DAILY", "FREQ=YEARLY"}), "every day and every year");
}

TEST(AUrlSafeText, KeepsDifferentTextsApart) {
    const std::pair<const char*, const char*> rows[] = {{"abc-1.2", "abc-1.2"},
                                                        {"a@b", "a_40b"},
                                                        {"a_40b", "a_5F40b"},
                                                        {"~", "_7E"},
                                                        {"ü", "_C3_BC"}};
    for (const auto& [text, safe] : rows) {
        EXPECT_EQ(urlSafe(text), safe);
    }
    const std::string prefix(300, 'a');
    EXPECT_NE(urlSafe(prefix + "1"), urlSafe(prefix + "2"));
    EXPECT_EQ(urlSafe(prefix).size(), 160U + 2U + 16U);
}

} // namespace plenzo
