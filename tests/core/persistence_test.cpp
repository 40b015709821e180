#include "core/saved_agents.h"
#include "support/fake_windows.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ASession : public testing::Test {
protected:
    static Instant at(int hour, int minute = 0, int second = 0) {
        return utc(2026, 3, 10, hour, minute, second);
    }
    void push(const Array& eventDicts) const { desktop.agent->alarmsUpdated(eventDicts, false); }
    void endAt(Instant now) {
        desktop.timers.advanceTo(now);
        desktop.powerNotices.shutDown();
    }
    void launchAt(Instant now) {
        desktop.agent.reset();
        desktop.clock.set(now);
        desktop.launch();
    }

    DesktopOfAgents desktop{at(7)};
};

TEST_F(ASession, ThatEndedIsMadeUpForByTheNextLaunch) {
    desktop.launch();
    push({eventAt("before", at(7, 50)), eventAt("meanwhile", at(8, 30)),
          eventAt("later", at(9, 30))});
    endAt(at(8));
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("before"));
    EXPECT_THAT(desktop.fileNames(), ElementsAre("Calendars.plist", "Reminders.plist"))
        << "without weather there is no file of it";
    launchAt(at(9));
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("before", "meanwhile"));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("later"));
    EXPECT_THAT(desktop.fileNames(), IsEmpty());
    launchAt(at(9, 10));
    EXPECT_THAT(desktop.pendingUIDs(), IsEmpty()) << "what was saved is used once";
}

TEST_F(ASession, DoesNotFireWhatWasDueBeforeItsEndWhetherOrNotItHadFired) {
    desktop.clock.set(at(8));
    ASSERT_TRUE(desktop.save({.eventDicts = {eventAt("before", at(7, 50)), eventAt("at", at(8)),
                                             eventAt("after", at(8, 0, 1))},
                              .sourceNodes = {},
                              .weather = {}}));
    launchAt(at(9));
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("at", "after"));
}

TEST_F(ASession, PartsWhatHasFiredAtTheMomentOfItsEndFromWhatHasNot) {
    desktop.launch();
    const double leastSeconds = 2e-6;
    push({eventAt("at", at(8)), eventAt("just after", at(8) + leastSeconds)});
    endAt(at(8));
    ASSERT_THAT(desktop.deliveredTitles(), ElementsAre("at"));
    launchAt(at(8) + leastSeconds);
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("at", "just after"));
}

TEST_F(ASession, SavesAgainWhatStillHappensBeforeThePowerIsOff) {
    desktop.launch();
    push({eventAt("fires late", at(8, 0, 2)), eventAt("stays", at(10))});
    endAt(at(8));
    desktop.timers.advanceTo(at(8, 0, 3));
    desktop.agent->weatherUpdated({{Key("city"), "Lisbon"}});
    desktop.agent->sourceListUpdated({Dictionary{{keys::uid, "work"}}});
    launchAt(at(9));
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("fires late")) << "once";
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("stays"));
    EXPECT_THAT(DesktopOfAgents::uidsOf(desktop.agent->sourceListNodes()), ElementsAre("work"));
    EXPECT_EQ(Value(desktop.agent->weatherDict()), Value(Dictionary{{Key("city"), "Lisbon"}}));
}

TEST_F(ASession, ThatDoesNotEndAfterAllLeavesNothingBehind) {
    desktop.launch();
    push({eventAt("e", at(10))});
    endAt(at(8));
    desktop.powerNotices.cancelShutdown();
    EXPECT_THAT(desktop.fileNames(), IsEmpty());
    push({eventAt("f", at(11))});
    EXPECT_THAT(desktop.fileNames(), IsEmpty()) << "nothing is saved until the next end";
    endAt(at(9));
    launchAt(at(9, 30));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("f"));
}

TEST_F(ASession, KeepsNoColours) {
    desktop.launch();
    Dictionary colored = eventAt("e", at(10));
    colored.set(keys::colInt, 0x1E90FF);
    const Dictionary calendar{{keys::uid, "work"}, {keys::colInt, 0x1E90FF}};
    push({colored});
    desktop.agent->sourceListUpdated({Dictionary{{keys::children, Array{calendar}}}});
    endAt(at(8));
    EXPECT_EQ(desktop.saved("Reminders.plist"), Value(Array{colored}));
    const Value nodes = desktop.saved("Calendars.plist");
    const Array& children = *nodes.array()->begin()->dictionary()->arrayForKey(keys::children);
    const Dictionary& savedCalendar = *children.begin()->dictionary();
    EXPECT_FALSE(savedCalendar.contains(keys::color));
    EXPECT_EQ(savedCalendar.integerForKey(keys::colInt), 0x1E90FF);
    launchAt(at(9));
    const Array& restored =
        *desktop.agent->sourceListNodes().begin()->dictionary()->arrayForKey(keys::children);
    EXPECT_TRUE(restored.begin()->dictionary()->contains(keys::color)) << "made anew";
}

TEST_F(ASession, LosesNothingByARecordThatNoFileCanHold) {
    desktop.launch();
    Dictionary deep = eventAt("deep", at(10));
    deep.set(keys::notes, nestedTooDeep());
    push({eventAt("first", at(10)), deep, eventAt("last", at(10))});
    desktop.agent->sourceListUpdated(
        {Dictionary{{keys::uid, "deep"}, {keys::notes, nestedTooDeep()}},
         Dictionary{{keys::uid, "work"}}});
    desktop.agent->weatherUpdated({{Key("city"), nestedTooDeep()}});
    endAt(at(8));
    launchAt(at(9));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("first", "last"));
    EXPECT_THAT(DesktopOfAgents::uidsOf(desktop.agent->sourceListNodes()), ElementsAre("work"));
    EXPECT_TRUE(desktop.agent->weatherDict().empty());
}

TEST_F(ASession, LeavesWhatIsNoFileOfItsOwnWhereItIs) {
    const auto bytesOf = [](const Value& value) { return writeBinaryPropertyList(value); };
    const std::vector<std::byte> garbage(1000, std::byte{0x5A});
    auto cut = bytesOf(Array{eventAt("cut", at(10))});
    cut.resize(cut.size() - 5);
    const std::vector<std::byte> cases[] = {garbage, cut, {}, bytesOf("text"), bytesOf(17)};
    for (const auto& bytes : cases) {
        for (const char* name : {"Reminders.plist", "Calendars.plist", "Weather.plist"}) {
            desktop.files.contents[desktop.pathOf(name)] = bytes;
        }
        launchAt(at(9));
        EXPECT_EQ(desktop.fileNames().size(), 3U);
        EXPECT_THAT(desktop.pendingUIDs(), IsEmpty());
        EXPECT_THAT(desktop.agent->sourceListNodes(), IsEmpty());
        EXPECT_TRUE(desktop.agent->weatherDict().empty());
    }
    desktop.files.contents[desktop.pathOf("Reminders.plist")] = bytesOf(Dictionary());
    desktop.files.contents[desktop.pathOf("Calendars.plist")] = bytesOf(Dictionary());
    desktop.files.contents[desktop.pathOf("Weather.plist")] = bytesOf(Array());
    launchAt(at(9));
    EXPECT_EQ(desktop.fileNames().size(), 3U) << "each of the other kind";
}

TEST_F(ASession, IsSavedAlthoughFoldersAreInTheWay) {
    for (const char* name : {"Reminders.plist", "Calendars.plist", "Weather.plist"}) {
        desktop.files.contents[desktop.pathOf(name) + "/users own"] = {};
    }
    desktop.launch();
    desktop.push({.eventDicts = {eventAt("e", at(10))},
                  .sourceNodes = {Dictionary{{keys::uid, "work"}}},
                  .weather = {{Key("city"), "Lisbon"}}});
    endAt(at(8));
    launchAt(at(9));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("e"));
    EXPECT_THAT(DesktopOfAgents::uidsOf(desktop.agent->sourceListNodes()), ElementsAre("work"));
    EXPECT_FALSE(desktop.agent->weatherDict().empty());
    EXPECT_EQ(desktop.fileNames().size(), 3U) << "what was in the way is kept";
}

TEST_F(ASession, GoesOnWhereNothingCanBeWritten) {
    desktop.files.isReadOnly = true;
    desktop.launch();
    push({eventAt("e", at(10))});
    endAt(at(8));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("e"));
    EXPECT_THAT(desktop.fileNames(), IsEmpty());
    desktop.files.isReadOnly = false;
    desktop.powerNotices.shutDown();
    launchAt(at(9));
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("e"));
}

TEST_F(ASession, LetsGoOfFilesThatAreGoneWhenItEnds) {
    desktop.launch();
    desktop.fileAccess.kept = {"/gone", "/there"};
    desktop.fileAccess.files = {"/there"};
    endAt(at(8));
    EXPECT_THAT(desktop.fileAccess.kept, ElementsAre("/there"));
}

TEST_F(ASession, ShowsTheRestoredWeatherInTheStatusWindow) {
    ASSERT_TRUE(desktop.save({.eventDicts = {eventAt("e", at(10))},
                              .sourceNodes = {},
                              .weather = {{Key("city"), "Lisbon"}}}));
    FakeStatusWindow statusWindow;
    PlenzoAlarm agent(desktop.platform(), testIdentity(), {.statusWindow = &statusWindow});
    agent.applicationDidFinishLaunching();
    EXPECT_THAT(statusWindow.told, ElementsAre("all 1", "weather", "reload"));
}

} // namespace
} // namespace plenzo
