#include "core/windowed_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double day = 86400;
constexpr double hour = 3600;

class ADay : public testing::Test {
protected:
    void SetUp() override { test.launch(); }

    [[nodiscard]] int refreshCount() const { return test.alarmWindow.refreshCount; }
    void setClock(Instant now) {
        test.clock.set(now);
        test.systemChangeNotices.changeTime();
        test.timers.fireDue();
    }
    void setZone(const std::string& name) {
        const TimeZone previous = test.regionalSettings.timeZone();
        test.regionalSettings.setTimeZone(zone(name));
        test.systemChangeNotices.changeTimeZoneFrom(previous);
    }

    WindowedAgent test;
    const Instant noon = test.clock.now();
    const Instant midnight = instantIn(zone("Europe/Berlin"), 2026, 3, 11);
};

TEST_F(ADay, EndsTwoSecondsAfterMidnightOfItsZoneHoweverLongItIs) {
    struct Case {
        const char* zone;
        Instant now;
        Instant midnight;
    };
    const Case cases[] = {
        {"Europe/Berlin", utc(2026, 3, 28, 22, 59), utc(2026, 3, 28, 23)},
        {"Europe/Berlin", utc(2026, 3, 28, 23), utc(2026, 3, 29, 22)},   // of 23 hours
        {"Europe/Berlin", utc(2026, 10, 24, 22), utc(2026, 10, 25, 23)}, // of 25 hours
        {"Europe/Berlin", utc(2026, 12, 31, 12), utc(2026, 12, 31, 23)},
        {"America/Sao_Paulo", utc(2018, 11, 3, 12), utc(2018, 11, 4, 3)}, // begins at 01:00
        {"Africa/Cairo", utc(2024, 4, 25, 12), utc(2024, 4, 25, 22)},     // begins at 01:00
        {"Pacific/Apia", utc(2011, 12, 29, 20), utc(2011, 12, 30, 10)},   // a day is left out
        {"Pacific/Kiritimati", utc(2026, 3, 10, 9, 59, 59), utc(2026, 3, 10, 10)},
        {"Pacific/Kiritimati", utc(2026, 3, 10, 10), utc(2026, 3, 11, 10)}};
    for (const Case& one : cases) {
        WindowedAgent there(one.now);
        there.regionalSettings.setTimeZone(zone(one.zone));
        there.launch();
        EXPECT_EQ(there.timers.nextFireDate(), one.midnight + 2)
            << one.zone << " at " << one.now.secondsSinceReferenceDate();
    }
}

TEST_F(ADay, IsFollowedByOneForWhichEverythingIsComputedAnew) {
    const Instant inTwoWeeks = midnight + 14 * day;
    test.pushFull({event("far", inTwoWeeks, {relativeReminder("r", 0)})});
    test.agent.weatherUpdated({{Key("city"), "Lisbon"}});
    EXPECT_THAT(test.pendingUIDs(), IsEmpty()) << "more than 14 days ahead";
    test.told();
    test.timers.advanceTo(midnight + 1.9);
    EXPECT_EQ(refreshCount(), 0);
    test.timers.advanceTo(midnight + 2);
    EXPECT_EQ(refreshCount(), 1);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("far"));
    EXPECT_THAT(test.told(), ElementsAre("all 1", "weather"));
    EXPECT_EQ(test.timers.nextFireDate(), midnight + day + 2);
    EXPECT_EQ(test.timers.pendingCount(), 2U) << "that of the alarm and that of midnight";
}

TEST_F(ADay, IsMadeUpForOnceAfterASleepThroughMidnight) {
    for (const bool timerComesFirst : {false, true}) {
        WindowedAgent sleeper;
        sleeper.launch();
        sleeper.powerNotices.fallAsleep();
        sleeper.clock.set(midnight + 10 * hour);
        if (timerComesFirst) {
            sleeper.timers.fireDue();
        }
        sleeper.powerNotices.wakeUp();
        sleeper.timers.fireDue();
        EXPECT_EQ(sleeper.alarmWindow.refreshCount, 1) << timerComesFirst;
        sleeper.timers.advanceTo(midnight + day + 2);
        EXPECT_EQ(sleeper.alarmWindow.refreshCount, 2) << timerComesFirst;
    }
}

TEST_F(ADay, GoesOnAfterAShortSleep) {
    test.powerNotices.fallAsleep();
    test.clock.set(noon + hour);
    test.powerNotices.wakeUp();
    test.timers.advanceTo(midnight + 1);
    EXPECT_EQ(refreshCount(), 0);
    test.timers.advanceTo(midnight + 2);
    EXPECT_EQ(refreshCount(), 1);
}

TEST_F(ADay, StaysTheSameWhenTheClockIsSetWithinIt) {
    setClock(noon - 2 * hour);
    setClock(noon + 5 * hour);
    EXPECT_EQ(refreshCount(), 0);
    test.timers.advanceTo(midnight + 2);
    EXPECT_EQ(refreshCount(), 1);
}

TEST_F(ADay, IsAnotherOneWhenTheClockIsSetPastMidnightOrADayBack) {
    setClock(midnight + hour);
    EXPECT_EQ(refreshCount(), 1);
    EXPECT_EQ(test.timers.nextFireDate(), midnight + day + 2);
    setClock(noon);
    EXPECT_EQ(refreshCount(), 2);
    EXPECT_EQ(test.timers.nextFireDate(), midnight + 2);
    setClock(noon - 30 * day);
    EXPECT_EQ(refreshCount(), 3);
}

TEST_F(ADay, MovesWithTheZone) {
    const Instant allDayDate = utc(2026, 3, 12);
    Dictionary allDay = event("all day", allDayDate, {relativeReminder("r", 9 * hour)});
    allDay.set(keys::allDay, true);
    test.pushFull({allDay, event("timed", allDayDate + 9 * hour, {relativeReminder("s", 0)})});
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("all day", "timed")) << "08:00 and 09:00 UTC";
    setZone("America/New_York");
    EXPECT_EQ(refreshCount(), 1);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("timed", "all day")) << "09:00 and 13:00 UTC";
    EXPECT_EQ(test.timers.nextFireDate(), utc(2026, 3, 11, 4, 0, 2)) << "midnight there";
    setZone("America/New_York");
    EXPECT_EQ(refreshCount(), 1) << "the zone was in force already";
}

TEST_F(ADay, IsOnlyDrawnAnewInAnotherLocale) {
    test.pushFull({event("e", noon + hour, {relativeReminder("r", 0)})});
    test.told();
    test.systemChangeNotices.changeTimeFormat();
    EXPECT_THAT(test.told(), ElementsAre("all 1"));
    EXPECT_EQ(refreshCount(), 0);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("e"));
}

TEST_F(ADay, DoesNotBringBackWhatTheUserHasSeen) {
    test.pushFull({event("e", noon + hour, {relativeReminder("r", 0)})});
    test.timers.advanceTo(noon + hour);
    setZone("Asia/Tokyo");
    setClock(noon + hour - 60);
    setZone("Europe/Berlin");
    test.timers.advanceTo(noon + 2 * hour);
    EXPECT_THAT(test.alarmWindow.titles(), ElementsAre("e"));
}

class ASleepingAgent : public ADay {
protected:
    void SetUp() override {
        ADay::SetUp();
        test.pushFull({eventIn("due asleep", 60), eventIn("due later", 2 * hour)});
        test.powerNotices.fallAsleep();
    }
    Dictionary eventIn(const std::string& uid, double seconds) const {
        return event(uid, noon + seconds, {relativeReminder(uid + "-r", 0)});
    }
    void wakeAt(Instant now) {
        test.clock.set(now);
        test.powerNotices.wakeUp();
    }
};

TEST_F(ASleepingAgent, FiresAtOnceWhatFellDueWhenItWakes) {
    wakeAt(noon + hour);
    EXPECT_THAT(test.alarmWindow.titles(), ElementsAre("due asleep"));
    EXPECT_TRUE(test.alarmWindow.isShown);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("due later"));
}

TEST_F(ASleepingAgent, TakesWhatWasPushedASecondAfterItWokeInTheOrderItCame) {
    test.pushFull({eventIn("first", 3 * hour)});
    test.clock.set(noon + 30 * 60);
    test.timers.advanceTo(noon + 31 * 60);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("due later")) << "however long it sleeps";
    wakeAt(noon + hour);
    test.pushDelta({deletionNotice("first"), eventIn("second", 3 * hour)});
    test.timers.advanceTo(noon + hour + 0.999);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("due later"));
    test.timers.advanceTo(noon + hour + 1);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("second"));
    test.pushDelta({eventIn("at once", 2.5 * hour)});
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("at once", "second"));
}

TEST_F(ASleepingAgent, WaitsOnWhenItFallsAsleepAgainWithinTheSecond) {
    test.pushFull({eventIn("waiting", 3 * hour)});
    wakeAt(noon + hour);
    test.timers.advanceTo(noon + hour + 0.5);
    test.powerNotices.fallAsleep();
    test.timers.advanceTo(noon + hour + 60);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("due later"));
    wakeAt(noon + hour + 100);
    test.timers.advanceTo(noon + hour + 101);
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("waiting"));
}

TEST_F(ASleepingAgent, DoesNotFireWhatWasOverWhenItsPushIsTaken) {
    test.pushDelta({eventIn("over", 600)});
    wakeAt(noon + hour);
    test.timers.advanceTo(noon + hour + 1);
    EXPECT_THAT(test.alarmWindow.titles(), ElementsAre("due asleep"));
    EXPECT_THAT(test.pendingUIDs(), ElementsAre("due later"));
}

} // namespace
} // namespace plenzo
