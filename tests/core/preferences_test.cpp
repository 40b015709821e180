#include "core/test_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

TEST(Preferences, HaveTheirDefaultsUntilAValueIsStored) {
    TestAgent test;
    const FakeUserDefaults& defaults = test.defaults;
    EXPECT_EQ(defaults.integerForKey("alarmsSnoozeSeconds"), 300);
    EXPECT_EQ(defaults.integerForKey("alarmsHotKeyCode"), 11);
    EXPECT_EQ(defaults.integerForKey("alarmsHotKeyModifiers"), 4352);
    EXPECT_EQ(defaults.integerForKey("alarmsDaysToShow"), 3);
    for (const char* key :
         {"alarmsSnoozeDefault", "alarmsShowDated", "alarmsShowUndated", "alarmsShowCompleted"}) {
        EXPECT_TRUE(defaults.boolForKey(key)) << key;
    }
    for (const char* key : {"alarmsTakeFocus", "alarmsShowMenuIcon", "alarmsIssueAlarms",
                            "alarmsUseNotificationCenter", "alarmsSticky"}) {
        EXPECT_EQ(defaults.valueForKey(key), Value(false)) << key;
    }
    EXPECT_EQ(defaults.valueForKey("alarmsOmitCalendars"), Value(Array()));

    test.agent.prefsUpdated({{Key("alarmsSnoozeSeconds"), -600}});
    EXPECT_EQ(defaults.integerForKey("alarmsSnoozeSeconds"), -600);
}

TEST(Preferences, AreCopiedBlindlyFromTheHostAndWritten) {
    TestAgent test;
    const Dictionary pushed{{Key("somethingElse"), Array{1, "two"}}, {Key("alarmsSticky"), "yes?"}};
    test.agent.prefsUpdated(pushed);
    for (const auto& [key, value] : pushed) {
        EXPECT_EQ(test.defaults.valueForKey(key.name()), value) << key.name();
    }
    EXPECT_EQ(test.defaults.synchronizeCount, 1);
}

TEST(Preferences, OfTheHostLeaveWhatTheAgentKeepsForItself) {
    TestAgent test;
    const Dictionary kept{{Key("/home/ana/plan"), Value("reference")}};
    test.defaults.setValues({{Key("secureBookmarks"), kept}, {Key("normalBookmarks"), kept}});
    test.agent.prefsUpdated({{Key("secureBookmarks"), Dictionary()},
                             {Key("alarmsDaysToShow"), 9},
                             {Key("normalBookmarks"), 1}});
    EXPECT_EQ(test.defaults.valueForKey("secureBookmarks"), Value(kept));
    EXPECT_EQ(test.defaults.valueForKey("normalBookmarks"), Value(kept));
    EXPECT_EQ(test.defaults.integerForKey("alarmsDaysToShow"), 9);
}

TEST(Preferences, RemoveNotificationsOnlyWhenTheirDeliveryIsSwitchedOff) {
    struct Case {
        bool issueBefore, useBefore, issueAfter, useAfter, removes;
    };
    const Case cases[] = {
        {true, true, true, false, true},    {true, true, false, true, true},
        {true, true, false, false, true},   {true, true, true, true, false},
        {true, false, true, true, false},   {true, false, true, false, false},
        {false, true, false, false, false}, {false, false, true, true, false},
    };
    for (const auto& [issueBefore, useBefore, issueAfter, useAfter, removes] : cases) {
        TestAgent test;
        const auto push = [&test](bool issue, bool use) {
            test.agent.prefsUpdated(
                {{Key("alarmsIssueAlarms"), issue}, {Key("alarmsUseNotificationCenter"), use}});
        };
        push(issueBefore, useBefore);
        test.journal.clear();
        push(issueAfter, useAfter);
        EXPECT_EQ(test.journal, removes ? Journal{"remove notifications"} : Journal{})
            << issueBefore << useBefore << issueAfter << useAfter;
    }
}

} // namespace
} // namespace plenzo
