#include "core/inspector.h"
#include "core/notification_delivery.h"
#include "core/preference_keys.h"
#include "propertylist/known_keys.h"
#include "support/fake_clock.h"
#include "support/fake_desktop.h"
#include "support/fake_user_defaults.h"
#include "support/fake_workspace.h"
#include "support/instants.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

class ANotification : public testing::Test {
protected:
    ANotification() { registerDefaults(defaults); }

    /// An occurrence of tea at 13:00, with a reminder of its own name.
    static Dictionary tea(const std::string& uid = "tea-10") {
        return {{keys::uid, uid},
                {keys::title, uid},
                {keys::date, utc(2026, 3, 10, 13).date()},
                {keys::rem, Array{reminder("r")}}};
    }
    static Dictionary reminder(const std::string& uid) { return {{keys::uid, uid}}; }

    void deliver(const Dictionary& eventDict, const std::optional<Dictionary>& reminderDict) {
        Alarm alarm;
        alarm.fireDate = CalendarDate::calendarDateWithDate(clock.now(), TimeZone::universal());
        alarm.eventDict = std::make_shared<Dictionary>(eventDict);
        alarm.reminderDict = reminderDict;
        delivery.addUserNotificationForAlarm(alarm);
    }
    void deliver(const std::string& uid, const std::string& reminderUID = "r") {
        deliver(tea(uid), reminder(reminderUID));
    }
    void setSnooze(Value seconds) {
        defaults.setValues({{Key(preferences::snoozeSeconds), std::move(seconds)}});
    }
    std::vector<std::string> shown() const {
        std::vector<std::string> titles;
        for (const auto& [identifier, notification] : center.deliveredNotifications()) {
            titles.push_back(notification.title);
        }
        return titles;
    }
    std::vector<std::string> opened() { return std::exchange(workspace.opened, {}); }
    static std::string snoozeUntil(Instant date, const std::string& reminderUID = "r") {
        return "open quietly plenzoevent://snooze/" + reminderUID + "/" +
               std::to_string(static_cast<long long>(date.secondsSinceReferenceDate()));
    }

    Journal journal;
    FakeClock clock{utc(2026, 3, 10, 10)};
    FakeRegionalSettings regionalSettings{zone("Europe/Berlin")};
    FakeLocalizedStrings strings;
    FakeUserDefaults defaults;
    FakeWorkspace workspace;
    FakeUserNotificationCenter center{journal, clock};
    HostCommands hostCommands{workspace};
    AlarmDateText dateText{
        {.clock = clock, .regionalSettings = regionalSettings, .strings = strings}};
    NotificationDelivery delivery{{.center = center,
                                   .dateText = dateText,
                                   .strings = strings,
                                   .defaults = defaults,
                                   .clock = clock,
                                   .hostCommands = hostCommands}};
};

TEST_F(ANotification, CarriesAButtonAndWhatItIsAbout) {
    deliver("tea-10");
    EXPECT_EQ(center.delivered.back().actionButtonTitle, "Snooze");
    EXPECT_EQ(
        Value(center.delivered.back().userInformation),
        Value(Dictionary{{keys::eventUidPlusDay, "tea-10"},
                         {keys::notificationReminderUid, "r"},
                         {keys::eventTime, utc(2026, 3, 10, 13).secondsSinceReferenceDate()}}));
}

TEST_F(ANotification, KnowsWhatItIsAboutUpToTheFirstThatIsMissing) {
    const auto informationOf = [this](const Key& missing, const Dictionary& reminderDict) {
        Dictionary eventDict = tea();
        eventDict.remove(missing);
        deliver(eventDict, reminderDict);
        return Value(center.delivered.back().userInformation);
    };
    EXPECT_EQ(informationOf(keys::uid, reminder("r")), Value(Dictionary()));
    EXPECT_EQ(informationOf(keys::notes, Dictionary()),
              Value(Dictionary{{keys::eventUidPlusDay, "tea-10"}}));
    EXPECT_EQ(informationOf(keys::date, reminder("r")),
              Value(Dictionary{{keys::eventUidPlusDay, "tea-10"},
                               {keys::notificationReminderUid, "r"},
                               {keys::eventTime, 0}}));
    deliver(tea(), std::nullopt);
    EXPECT_EQ(Value(center.delivered.back().userInformation),
              Value(Dictionary{{keys::eventUidPlusDay, "tea-10"}}));
    delivery.addUserNotificationForAlarm(Alarm());
    EXPECT_EQ(center.delivered.size(), 4U) << "a heading is no alarm";
}

TEST_F(ANotification, SoundsAsItsReminderSaysIfThereIsSuchASound) {
    struct Case {
        Dictionary reminderDict;
        std::optional<std::string> soundName;
    };
    center.sounds = {"Basso", "Big Bell", "Größe"};
    const auto sound = [](const Value& url) {
        return Dictionary{{keys::uid, "r"}, {keys::type, 1}, {keys::url, url}};
    };
    const Case cases[] = {{sound("Big%20Bell"), "Big Bell"},
                          {sound("Big Bell"), "Big Bell"},
                          {sound("Gr%C3%B6%c3%9Fe"), "Größe"},
                          {sound("Gong"), ""},
                          {sound(""), ""},
                          {sound("100%"), "Basso"},
                          {sound("%zz"), "Basso"},
                          {sound("%FF"), "Basso"},
                          {sound(7), "Basso"},
                          {{{keys::type, 1}}, "Basso"},
                          {{{keys::type, 0}, {keys::url, "Basso"}}, std::nullopt},
                          {{{keys::type, 10}}, std::nullopt}};
    for (const auto& [reminderDict, soundName] : cases) {
        deliver(tea(), reminderDict);
        EXPECT_EQ(center.delivered.back().soundName, soundName);
    }
    center.sounds.clear();
    deliver(tea(), Dictionary{{keys::type, 1}});
    EXPECT_EQ(center.delivered.back().soundName, "") << "the desktop's own";
}

TEST_F(ANotification, TakesThePlaceOfAnEarlierOneOfItsOccurrence) {
    deliver("tea-10", "first");
    deliver("tea-11");
    deliver("tea-10", "second");
    EXPECT_THAT(shown(), ElementsAre("tea-11", "tea-10"));
    center.activate("tea-10", ActivationType::None);
    EXPECT_THAT(opened(), ElementsAre("open quietly plenzoevent://acknowledge/second"));
}

TEST_F(ANotification, IsFoundAgainAmongTheManyThatCameAndWent) {
    deliver("kept", "first");
    for (int number = 0; number < 1000; ++number) {
        deliver("tea " + std::to_string(number));
        center.activate("tea " + std::to_string(number), ActivationType::Other);
    }
    EXPECT_THAT(shown(), ElementsAre("kept"));
    delivery.removeNotificationsForUIDPlusDay("tea 999");
    deliver("tea 0");
    deliver("kept", "second");
    EXPECT_THAT(shown(), ElementsAre("tea 0", "kept"));
    delivery.removeNotificationsForDeletedOrAckdRemindersInEventDict({{keys::uid, "kept"}});
    EXPECT_THAT(shown(), ElementsAre("tea 0"));
}

TEST_F(ANotification, IsNotTakenForAnotherWhereIdentitiesAreMissing) {
    Dictionary nameless = tea();
    nameless.remove(keys::uid);
    deliver(nameless, reminder("r"));
    deliver(nameless, reminder("r"));
    deliver("");
    deliver("");
    EXPECT_EQ(shown().size(), 3U) << "an empty identity is one";
    delivery.removeNotificationsForUIDPlusDay("");
    delivery.removeNotificationsForDeletedOrAckdRemindersInEventDict(Dictionary());
    EXPECT_EQ(shown().size(), 2U);
}

TEST_F(ANotification, SnoozesFromNowOrToATimeBeforeTheStart) {
    struct Case {
        Value snoozeSeconds;
        Instant until;
    };
    clock.set(utc(2026, 3, 10, 10) + 0.7);
    const Case cases[] = {{300, utc(2026, 3, 10, 10, 5)},   {0, utc(2026, 3, 10, 10)},
                          {-600, utc(2026, 3, 10, 12, 50)}, {"900", utc(2026, 3, 10, 10, 15)},
                          {-4 * 3600, utc(2026, 3, 10, 9)}, {Array(), utc(2026, 3, 10, 10)}};
    for (const auto& [snoozeSeconds, until] : cases) {
        setSnooze(snoozeSeconds);
        deliver("tea-10");
        center.activate("tea-10", ActivationType::ActionButtonClicked);
        EXPECT_THAT(opened(), ElementsAre(snoozeUntil(until)));
    }
}

TEST_F(ANotification, TellsTheHostWhatTheUserDidAndIsGone) {
    struct Case {
        ActivationType activationType;
        std::vector<std::string> commands;
    };
    const std::string acknowledge = "open quietly plenzoevent://acknowledge/r";
    const Case cases[] = {
        {ActivationType::ActionButtonClicked, {snoozeUntil(clock.now() + 300)}},
        {ActivationType::ContentsClicked, {"open plenzoevent://info/tea-10", acknowledge}},
        {ActivationType::None, {acknowledge}},
        {ActivationType::Other, {}}};
    for (const auto& [activationType, commands] : cases) {
        deliver("tea-10");
        const DeliveredNotification notification = center.deliveredNotifications().begin()->second;
        delivery.processAlarmUserNotification(notification, activationType);
        EXPECT_EQ(opened(), commands);
        EXPECT_THAT(shown(), IsEmpty());
    }
}

TEST_F(ANotification, WithoutIdentitiesSendsEmptyOnes) {
    Dictionary nameless = tea();
    nameless.remove(keys::uid);
    nameless.set(keys::title, "nameless");
    deliver(nameless, std::nullopt);
    center.activate("nameless", ActivationType::ContentsClicked);
    EXPECT_THAT(opened(),
                ElementsAre("open plenzoevent://info/", "open quietly plenzoevent://acknowledge/"));
}

TEST_F(ANotification, IsCanceledByARecordWithoutItsReminderOrWithALaterAcknowledgement) {
    struct Case {
        Value reminders;
        bool isCanceled;
    };
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto acknowledged = [](const Value& ack) {
        return Value(Dictionary{{keys::uid, "r"}, {keys::ack, ack}});
    };
    const Instant delivered = clock.now();
    const Case cases[] = {{Array{acknowledged((delivered + 0.001).date())}, true},
                          {Array{acknowledged(delivered.date())}, false},
                          {Array{acknowledged((delivered - 60).date())}, false},
                          {Array{acknowledged("now")}, false},
                          {Array{acknowledged(Date{notANumber})}, false},
                          {Array{acknowledged(Instant::distantFuture().date())}, false},
                          {Array{reminder("r")}, false},
                          {Array{reminder("r"), acknowledged((delivered + 9).date())}, false},
                          {Array{"r", 7, reminder("other"), reminder("r")}, false},
                          {Array{reminder("other")}, true},
                          {Array{}, true},
                          {"none", true}};
    for (const auto& [reminders, isCanceled] : cases) {
        deliver("tea-10");
        deliver("tea-11");
        clock.set(delivered + 3600);
        Dictionary newer = tea("tea-10");
        newer.set(keys::rem, reminders);
        delivery.removeNotificationsForDeletedOrAckdRemindersInEventDict(newer);
        EXPECT_EQ(shown().size(), isCanceled ? 1U : 2U);
        EXPECT_EQ(shown().back(), "tea-11") << "another occurrence";
        clock.set(delivered);
    }
}

TEST_F(ANotification, GoesWithItsOccurrence) {
    deliver("tea-10");
    deliver("tea-11");
    delivery.removeNotificationsForUIDPlusDay("tea-10");
    EXPECT_THAT(shown(), ElementsAre("tea-11"));
    delivery.removeNotificationsForUIDPlusDay("unknown");
    EXPECT_THAT(shown(), ElementsAre("tea-11"));
    delivery.purgeAllUserNotifications();
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(opened(), IsEmpty()) << "what we remove nobody has answered";
}

TEST_F(ANotification, StaysForTwoHoursAndLongerWhenNobodyHasSeenIt) {
    clock.set(utc(2026, 3, 10, 9));
    deliver("seen");
    center.hasServer = false;
    deliver("waiting");
    clock.set(utc(2026, 3, 10, 10));
    center.hasServer = true;
    deliver("later");
    clock.set(utc(2026, 3, 10, 11));
    delivery.cleanDeliveredNotifications();
    EXPECT_THAT(shown(), ElementsAre("seen", "waiting", "later"));
    clock.set(utc(2026, 3, 10, 11, 0, 1));
    delivery.cleanDeliveredNotifications();
    EXPECT_THAT(shown(), ElementsAre("waiting", "later"));
}

TEST_F(ANotification, IsShownByTheInspector) {
    deliver("tea-10");
    center.hasServer = false;
    Dictionary nameless = tea();
    nameless.remove(keys::uid);
    deliver(nameless, reminder("r"));
    const TitleOrder order("en_US");
    const AlarmQueue queue(order);
    const Value rows = Inspector(queue, center, nullptr).deliveredNotifications();
    EXPECT_EQ(rows, Value(Array{
                        Dictionary{{"deliveryDate", clock.now().date()},
                                   {keys::title, "tea-10"},
                                   {keys::uid, "tea-10"},
                                   {keys::reminderUid, "r"},
                                   {"eventTime", utc(2026, 3, 10, 13).secondsSinceReferenceDate()},
                                   {"shown", true}},
                        Dictionary{{"deliveryDate", clock.now().date()},
                                   {keys::title, "tea-10"},
                                   {"shown", false}}}));
}

TEST_F(ANotification, IsAnsweredToNobodyAfterTheEnd) {
    deliver("tea-10");
    delivery.ignoreActivations();
    center.activate("tea-10", ActivationType::None);
    EXPECT_THAT(opened(), IsEmpty());
}

} // namespace
} // namespace plenzo
