#include "core/test_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AlarmsThatComeDue : public testing::Test {
protected:
    void SetUp() override {
        test.agent.applicationDidFinishLaunching();
        test.issueAlarms();
    }
    void push(const Array& eventDicts) { test.agent.alarmsUpdated(eventDicts, false); }

    TestAgent test;
    const Instant start = test.clock.now() + 3600;
};

TEST_F(AlarmsThatComeDue, AreDeliveredInOrderEachAtItsMoment) {
    push({event("second", start, {relativeReminder("a", -60)}),
          event("first", start, {relativeReminder("b", -900), relativeReminder("c", 0)})});
    test.timers.advanceTo(start - 900.001);
    EXPECT_THAT(test.deliveredTitles(), IsEmpty());
    test.timers.advanceTo(start - 900);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("first"));
    test.timers.advanceTo(start + 5);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("first", "second", "first"));
    EXPECT_THAT(test.pending(), IsEmpty());
    EXPECT_EQ(test.timers.pendingCount(), 1U) << "that of midnight";
}

TEST_F(AlarmsThatComeDue, AreNotDeliveredAgainByALaterTimer) {
    push({event("once", start, {relativeReminder("a", 0)}),
          event("later", start + 10, {relativeReminder("b", 0)})});
    test.timers.advanceTo(start);
    test.timers.advanceTo(start + 10);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("once", "later"));
}

TEST_F(AlarmsThatComeDue, LeaveTheQueueUnseenWhileAlarmsAreOff) {
    test.agent.prefsUpdated({{Key(preferences::issueAlarms), false}});
    push({event("unseen", start, {relativeReminder("a", 0)}),
          event("seen", start + 10, {relativeReminder("b", 0)})});
    test.timers.advanceTo(start);
    test.issueAlarms();
    test.timers.advanceTo(start + 10);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("seen"));
}

TEST_F(AlarmsThatComeDue, OfOneAbsoluteReminderAreDeliveredOnce) {
    push({event("monday", start, {absoluteReminder("shared", start)}),
          event("tuesday", start + 86400, {absoluteReminder("shared", start)}),
          event("other", start, {absoluteReminder("own", start)}),
          event("relative", start, {relativeReminder("shared", 0)})});
    test.timers.advanceTo(start);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("monday", "other", "relative"));
    EXPECT_THAT(test.pending(), IsEmpty());
}

TEST_F(AlarmsThatComeDue, AreShownByTheirReminderType) {
    push({event("display", start, {relativeReminder("0", 0, 0)}),
          event("sound", start + 1, {relativeReminder("1", 0, 1)}),
          event("mail", start + 2, {relativeReminder("2", 0, 2)}),
          event("nothing", start + 3, {relativeReminder("3", 0, 3)}),
          event("open", start + 4, {relativeReminder("4", 0, 4)}),
          event("unknown", start + 5, {relativeReminder("9", 0, 9)}),
          event("near", start + 6, {absoluteReminder("10", start + 6, 10)})});
    test.timers.advanceTo(start + 10);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("display", "sound", "near"));
    EXPECT_THAT(test.pending(), IsEmpty());
}

TEST_F(AlarmsThatComeDue, SayWhereTheEventIsOrElseWhatItIsAbout) {
    const auto push = [this](const char* uid, const char* location, const char* notes) {
        Dictionary eventDict = event(uid, start, {relativeReminder("r", 0)});
        eventDict.set(keys::location, location);
        eventDict.set(keys::notes, notes);
        test.agent.alarmsUpdated({eventDict}, true);
    };
    push("a", "Room 4", "Bring the plan");
    push("b", "", "Bring the plan");
    test.timers.advanceTo(start);
    ASSERT_EQ(test.notifications.delivered.size(), 2U);
    EXPECT_EQ(test.notifications.delivered[0].subtitle, "Room 4");
    EXPECT_EQ(test.notifications.delivered[1].subtitle, "Bring the plan");
}

TEST_F(AlarmsThatComeDue, SayWhenTheEventIsFromTheDayOfTheAlarm) {
    const Instant evening = instantIn(zone("Europe/Berlin"), 2026, 3, 10, 23, 30);
    const auto textOf = [this, evening](double secondsAhead, bool allDay) {
        const std::string uid = std::to_string(secondsAhead);
        Dictionary eventDict = event(uid, evening + secondsAhead, {absoluteReminder("r", evening)});
        eventDict.set(keys::allDay, allDay);
        test.agent.alarmsUpdated({eventDict}, false);
        test.clock.set(evening - 10);
        test.timers.advanceTo(evening);
        return test.notifications.delivered.back().informativeText;
    };
    EXPECT_EQ(textOf(600, false), "Today at 11:40 PM");
    EXPECT_EQ(textOf(3600, false), "Tomorrow at 12:30 AM");
    EXPECT_EQ(textOf(2 * 86400, false), "3/12/26, 11:30 PM");
    EXPECT_EQ(textOf(13.5 * 3600, true), "Tomorrow") << "an all-day date is its day in UTC";
}

TEST_F(AlarmsThatComeDue, SayWhenTheEventIsAsTheClockOfTheMomentShowsIt) {
    const auto textAfter = [this](const char* uid, double seconds, const char* zoneName) {
        test.regionalSettings.setTimeZone(zone(zoneName));
        push({event(uid, start + seconds, {relativeReminder("r", 0)})});
        test.timers.advanceTo(start + seconds);
        return test.notifications.delivered.back().informativeText;
    };
    EXPECT_EQ(textAfter("a", 0, "Europe/Berlin"), "Today at 2:00 PM");
    EXPECT_EQ(textAfter("b", 60, "America/New_York"), "Today at 9:01 AM");
    EXPECT_EQ(textAfter("c", 120, "Pacific/Kiritimati"), "Today at 3:02 AM");
}

TEST_F(AlarmsThatComeDue, DuringAClockStepAreAllDeliveredAtOnce) {
    push({event("a", start, {relativeReminder("a", 0)}),
          event("b", start + 86400, {relativeReminder("b", 0)})});
    test.timers.advanceTo(start + 2 * 86400);
    EXPECT_THAT(test.deliveredTitles(), ElementsAre("a", "b"));
}

} // namespace
} // namespace plenzo
