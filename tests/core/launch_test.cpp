#include "core/test_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;

TEST(AnAgentThatLaunches, OpensTheLinkBeforeItAnnouncesItself) {
    TestAgent test;
    test.agent.applicationDidFinishLaunching();
    EXPECT_THAT(test.journal, ElementsAre("create /home/ana/.local/share/PlenzoAlarm", "open link",
                                          "post PlenzoAlarm Launched"));
    EXPECT_EQ(test.agent.applicationSupportFolder(), "/home/ana/.local/share/PlenzoAlarm");
}

TEST(AnAgentThatLaunches, TakesTheTemporaryFolderWithoutAHomeAndGoesOnWithoutAFolder) {
    TestAgent test;
    test.folders.support.reset();
    test.folders.canCreate = false;
    test.agent.applicationDidFinishLaunching();
    EXPECT_EQ(test.agent.applicationSupportFolder(), "/tmp/PlenzoAlarm");
    EXPECT_EQ(test.journal.back(), "post PlenzoAlarm Launched");
}

TEST(AnAgentThatLaunches, ArmsNoTimerButThatOfMidnightWhileThereIsNothingToFire) {
    TestAgent test;
    test.agent.applicationDidFinishLaunching();
    EXPECT_EQ(test.timers.pendingCount(), 1U);
    EXPECT_EQ(test.timers.nextFireDate(), instantIn(zone("Europe/Berlin"), 2026, 3, 11, 0, 0, 2));
}

TEST(AnAgentThatEnds, ClosesTheLinkBeforeItSaysGoodbyeAndLeavesNotificationsAlone) {
    TestAgent test;
    test.agent.applicationDidFinishLaunching();
    test.journal.clear();
    test.agent.applicationWillTerminate();
    EXPECT_THAT(test.journal, ElementsAre("close link", "post PlenzoAlarm Quit"));
}

TEST(AnAgentAskedForItsVersion, KnowsItselfOnlyByTheExactText) {
    TestAgent test;
    for (const char* version : {"2.1t", "2.1", "", "2.1tt", "2.1T", "2.10t", "2.1t "}) {
        test.agent.version(version);
    }
    EXPECT_THAT(test.journal, ElementsAre("post PlenzoAlarm Version", "post PlenzoAlarm Relaunch",
                                          "post PlenzoAlarm Relaunch", "post PlenzoAlarm Relaunch",
                                          "post PlenzoAlarm Relaunch", "post PlenzoAlarm Relaunch",
                                          "post PlenzoAlarm Relaunch"));
}

TEST(AnAgentToldToPrepareForItsStop, WritesItsSettingsAndRemovesItsNotificationsButRunsOn) {
    TestAgent test;
    test.agent.applicationDidFinishLaunching();
    test.issueAlarms();
    const int writes = test.defaults.synchronizeCount;
    test.journal.clear();
    test.agent.prepareToStop();
    EXPECT_THAT(test.journal, ElementsAre("remove notifications"));
    EXPECT_EQ(test.defaults.synchronizeCount, writes + 1);

    const Instant soon = test.clock.now() + 60;
    test.agent.alarmsUpdated({event("after", soon, {relativeReminder("r", 0)})}, false);
    test.timers.advanceTo(soon);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("after"));
}

TEST(AnAgent, KeepsTheCalendarsWithColoursAndWhetherTheyAreShown) {
    TestAgent test;
    test.agent.prefsUpdated(Dictionary{{Key(preferences::omitCalendars), Array{"home"}}});
    const Dictionary work{{keys::uid, "work"}, {keys::colInt, 0x1E90FF}};
    const Dictionary home{{keys::uid, "home"}, {keys::colInt, 16711680}, {keys::visible, true}};
    const Dictionary group{{keys::uid, "group"}, {keys::children, Array{work, home}}};
    test.agent.sourceListUpdated({Dictionary{{keys::header, true}}, group, "no node"});

    const Dictionary shownWork{{keys::uid, "work"},
                               {keys::colInt, 0x1E90FF},
                               {keys::visible, true},
                               {keys::color, Color{0x1E, 0x90, 0xFF, 0xFF}}};
    const Dictionary hiddenHome{{keys::uid, "home"},
                                {keys::colInt, 16711680},
                                {keys::visible, false},
                                {keys::color, Color{0xFF, 0, 0, 0xFF}}};
    const Dictionary shownGroup{{keys::uid, "group"},
                                {keys::children, Array{shownWork, hiddenHome}}};
    EXPECT_EQ(Value(test.agent.sourceListNodes()),
              Value(Array{Dictionary{{keys::header, true}}, shownGroup}));
}

TEST(AnAgent, ReplacesTheWeatherByTheLatest) {
    TestAgent test;
    test.agent.weatherUpdated({{Key("city"), "Lisbon"}});
    test.agent.weatherUpdated({{Key("high"), 21}});
    EXPECT_EQ(Value(test.agent.weatherDict()), Value(Dictionary{{Key("high"), 21}}));
}

} // namespace
} // namespace plenzo
