#include "core/windowed_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* acknowledged = "open quietly plenzoevent://acknowledge/";

class AnIssuedAlarm : public testing::Test {
protected:
    void SetUp() override { test.launch(); }

    static std::vector<std::byte> bytesOf(const std::string& text) {
        const auto* first = reinterpret_cast<const std::byte*>(text.data());
        return {first, first + text.size()};
    }
    static Dictionary withURL(Dictionary reminder, const std::string& url) {
        reminder.set(keys::url, url);
        return reminder;
    }
    /// Fires them together, a minute after the last ones.
    void fire(const Array& eventDicts) {
        test.pushDelta(eventDicts);
        test.timers.advanceTo(due);
        due = due + 60;
    }
    void fire(const std::string& uid, const Dictionary& reminder) {
        fire({event(uid, due, {reminder})});
    }
    [[nodiscard]] std::vector<std::string> rows() const { return test.alarmWindow.titles(); }

    WindowedAgent test;
    Instant due = test.clock.now() + 60;
};

TEST_F(AnIssuedAlarm, IsARowOfTheWindowWhichIsThenShown) {
    fire("display", relativeReminder("r", 0));
    EXPECT_TRUE(test.alarmWindow.isShown);
    fire("sound", relativeReminder("r", 0, 1));
    fire("near", absoluteReminder("r", due, 10));
    fire("unknown", relativeReminder("r", 0, 9));
    EXPECT_THAT(rows(), ElementsAre("display", "sound", "near"));
    EXPECT_THAT(test.notifications.delivered, IsEmpty());
    EXPECT_THAT(test.opened(), IsEmpty());
}

TEST_F(AnIssuedAlarm, OfAnAbsoluteReminderIsOneRowForAllOccurrences) {
    fire({event("a", due, {absoluteReminder("shared", due, 1)}),
          event("b", due + 86400, {withURL(absoluteReminder("shared", due, 1), "Ping")}),
          event("c", due, {absoluteReminder("own", due)})});
    EXPECT_THAT(rows(), ElementsAre("a", "c"));
    EXPECT_THAT(test.played(), ElementsAre("Basso")) << "not that of the skipped one";
    EXPECT_THAT(test.pendingUIDs(), IsEmpty());
}

TEST_F(AnIssuedAlarm, LeavesWithoutATraceWhileAlarmsAreOff) {
    test.agent.prefsUpdated({{Key(preferences::issueAlarms), false}});
    fire({event("sound", due, {relativeReminder("1", 0, 1)}),
          event("mail", due, {relativeReminder("2", 0, 2)}),
          event("open", due, {withURL(relativeReminder("4", 0, 4), "https://a.example/")})});
    EXPECT_THAT(test.pendingUIDs(), IsEmpty());
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_THAT(test.played(), IsEmpty());
    EXPECT_THAT(test.opened(), IsEmpty());
    EXPECT_THAT(test.mailer.sent, IsEmpty());
}

TEST_F(AnIssuedAlarm, SoundsAsTheLastOfThoseThatFireTogether) {
    test.sounds.installed = {"Basso", "Ping", "Big Bell", "../etc"};
    fire({event("a", due, {withURL(relativeReminder("r", 0, 1), "Ping")}),
          event("b", due, {withURL(relativeReminder("r", 0, 1), "Big%20Bell")}),
          event("c", due, {withURL(relativeReminder("r", 0, 0), "Ping")})});
    EXPECT_THAT(test.played(), ElementsAre("Big Bell")) << "a display alarm has no sound";
    fire({event("a", due, {withURL(relativeReminder("r", 0, 1), "Ping")}),
          event("b", due, {relativeReminder("r", 0, 1)})});
    EXPECT_THAT(test.played(), ElementsAre("Basso")) << "without a name";
    fire("gone", withURL(relativeReminder("r", 0, 1), "No%20Such"));
    EXPECT_THAT(test.played(), ElementsAre("Basso"));
    fire("broken", withURL(relativeReminder("r", 0, 1), "Ping%"));
    EXPECT_THAT(test.played(), ElementsAre("Basso"));
}

TEST_F(AnIssuedAlarm, IsSilentWithinThreeSecondsOfTheLastSound) {
    const auto sounding = [this](double secondsLater) {
        const std::string uid = std::to_string(secondsLater);
        return event(uid, due + secondsLater, {relativeReminder("r", 0, 1)});
    };
    test.pushFull({sounding(0), sounding(2), sounding(3), sounding(3.5), sounding(6.4)});
    std::vector<int> counts;
    for (const double seconds : {0.0, 2.0, 3.0, 3.5, 6.4}) {
        test.timers.advanceTo(due + seconds);
        counts.push_back(static_cast<int>(test.sounds.played.size()));
    }
    EXPECT_THAT(counts, ElementsAre(1, 1, 1, 2, 2));
    EXPECT_EQ(rows().size(), 5U) << "all are shown";

    test.clock.set(due - 3600);
    test.pushFull({sounding(-1800)});
    test.timers.advanceTo(due - 1800);
    EXPECT_EQ(test.sounds.played.size(), 3U) << "the clock was set back since";
}

TEST_F(AnIssuedAlarm, LeavesTheSoundToItsNotification) {
    test.useNotifications();
    fire("sound", relativeReminder("r", 0, 1));
    EXPECT_THAT(test.played(), IsEmpty());
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(test.notifications.delivered.size(), 1U);
}

TEST_F(AnIssuedAlarm, ThatActsIsNotShownAndIsDone) {
    for (const bool useNotifications : {false, true}) {
        if (useNotifications) {
            test.useNotifications();
        }
        fire("mail", relativeReminder("m", 0, 2));
        EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "m"));
        fire("open", withURL(relativeReminder("o", 0, 4), "https://a.example/x"));
        EXPECT_THAT(test.opened(),
                    ElementsAre("open https://a.example/x", std::string(acknowledged) + "o"));
        fire("open nothing", relativeReminder("n", 0, 4));
        EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "n"));
    }
    EXPECT_EQ(test.mailer.sent.size(), 2U);
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_FALSE(test.alarmWindow.isShown);
    EXPECT_THAT(test.notifications.delivered, IsEmpty());
}

TEST_F(AnIssuedAlarm, OpensItsFileRatherThanItsURL) {
    const auto reminder = [](const std::string& path) {
        Dictionary dictionary = withURL(relativeReminder("o", 0, 4), "https://a.example/");
        dictionary.set(keys::book, Value::fromData(bytesOf(path)));
        return dictionary;
    };
    const std::string done = std::string(acknowledged) + "o";
    test.fileAccess.files = {"/plan.txt"};
    fire("there", reminder("/plan.txt"));
    EXPECT_THAT(test.opened(), ElementsAre("open file /plan.txt", done));
    EXPECT_THAT(test.fileAccess.accessed, IsEmpty()) << "the access is given back";
    fire("gone", reminder("/gone.txt"));
    EXPECT_THAT(test.opened(), ElementsAre(done));
    test.fileAccess.grantsAccess = false;
    fire("refused", reminder("/plan.txt"));
    EXPECT_THAT(test.opened(), ElementsAre(done));
    Dictionary noData = reminder("");
    noData.set(keys::book, "no data");
    fire("no data", noData);
    EXPECT_THAT(test.opened(), ElementsAre(done));
}

TEST_F(AnIssuedAlarm, MailsWhatTheEventIs) {
    struct Case {
        const char* location;
        const char* url;
        const char* notes;
        const char* details;
    };
    const Case cases[] = {{"Room", "https://u", "Notes", "Room\nhttps://u\n\nNotes"},
                          {"Room", "", "Notes", "Room\n\nNotes"},
                          {"", "https://u", "Notes", "https://u\n\nNotes"},
                          {"", "", "Notes", "Notes"},
                          {"Room %@", "https://u", "", "Room %@\nhttps://u"},
                          {"", "", "", ""}};
    for (const Case& one : cases) {
        Dictionary reminder = relativeReminder("m", 0, 2);
        reminder.set(keys::to, Array{"ana@a.example", 17, "ben@b.example"});
        Dictionary tea = event("tea %@", utc(2026, 3, 10, 12, 1), {reminder});
        tea.set(keys::end, utc(2026, 3, 10, 13, 1).date());
        tea.set(keys::location, one.location);
        tea.set(keys::url, one.url);
        tea.set(keys::notes, one.notes);
        WindowedAgent sender;
        sender.launch();
        sender.pushFull({tea});
        sender.timers.advanceTo(utc(2026, 3, 10, 12, 1));
        ASSERT_EQ(sender.mailer.sent.size(), 1U);
        const MailMessage& message = sender.mailer.sent.front();
        EXPECT_EQ(message.subject, "Plenzo Alarm - tea %@");
        EXPECT_EQ(message.body, "Tuesday, March 10, 2026 at 1:01 PM - 2:01 PM CET\n\n"
                                "tea %@\n\n" +
                                    std::string(one.details));
        EXPECT_EQ(message.attachment, "");
        EXPECT_EQ(message.delivery, MailMessage::Delivery::SendUnseen);
        ASSERT_EQ(message.recipients.size(), 2U) << "what is no address is left out";
        EXPECT_EQ(message.recipients[0].email, "ana@a.example");
        EXPECT_EQ(message.recipients[1].email, "ben@b.example");
    }
}

TEST_F(AnIssuedAlarm, IsDoneAlsoWhenTheHostMailsOrNobodyCan) {
    Dictionary byHost = relativeReminder("m", 0, 2);
    byHost.set(keys::email, true);
    fire("by the host", byHost);
    EXPECT_THAT(test.mailer.sent, IsEmpty());
    EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "m"));
    test.mailer.works = false;
    fire("in vain", relativeReminder("v", 0, 2));
    EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "v"));
}

TEST_F(AnIssuedAlarm, IsDoneWhenItsMailBeginsToGoOutOneAfterTheOther) {
    test.mailer.waits = true;
    test.pushFull({event("a", due, {relativeReminder("a", 0, 2)}),
                   event("b", due, {relativeReminder("b", 0, 2)}),
                   event("c", due, {relativeReminder("c", 0, 2)})});
    test.timers.advanceTo(due);
    EXPECT_THAT(test.opened(), IsEmpty());
    EXPECT_EQ(test.mailer.sent.size(), 1U);
    test.mailer.begin();
    EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "a"));
    test.mailer.finish();
    EXPECT_THAT(test.opened(), IsEmpty()) << "a is done, b waits";
    EXPECT_EQ(test.mailer.sent.size(), 2U);
    test.mailer.works = false;
    test.mailer.finish();
    EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "b")) << "given up";
    test.mailer.begin();
    test.mailer.finish();
    EXPECT_THAT(test.opened(), ElementsAre(std::string(acknowledged) + "c"));
    EXPECT_EQ(test.mailer.sent.size(), 3U);
}

TEST_F(AnIssuedAlarm, IsNotLostAmongVeryManyWhoseMailIsRefused) {
    constexpr int count = 20'000;
    test.mailer.waits = true;
    Array events;
    for (int number = 0; number < count; ++number) {
        events.append(event(std::to_string(number), due, {relativeReminder("m", 0, 2)}));
    }
    test.pushFull(events);
    test.timers.advanceTo(due);
    test.mailer.waits = false;
    test.mailer.works = false;
    test.mailer.finish();
    EXPECT_EQ(test.mailer.sent.size(), std::size_t{count});
    EXPECT_EQ(test.opened().size(), std::size_t{count});
}

TEST_F(AnIssuedAlarm, WasPendingForItsEventUntilThen) {
    const Instant distantFuture = Instant::distantFuture();
    test.pushFull({event("e", due, {relativeReminder("r", 0), relativeReminder("s", 10)}),
                   event("other", due + 600, {relativeReminder("r", 0)})});
    const auto row = [](const std::string& uid) {
        Alarm alarm;
        alarm.eventDict = std::make_shared<Dictionary>(Dictionary{{keys::uid, uid}});
        return alarm;
    };
    EXPECT_TRUE(test.agent.eventHasAlarm(row("e"), distantFuture));
    EXPECT_FALSE(test.agent.eventHasAlarm(row("e"), due)) << "strictly before";
    EXPECT_TRUE(test.agent.eventHasAlarm(row("e"), due + 1));
    EXPECT_FALSE(test.agent.eventHasAlarm(row("unknown"), distantFuture));
    EXPECT_FALSE(test.agent.eventHasAlarm(Alarm(), distantFuture));
    test.told();
    test.timers.advanceTo(due);
    EXPECT_THAT(test.told(), ElementsAre("reload"));
    EXPECT_TRUE(test.agent.eventHasAlarm(row("e"), distantFuture));
    test.timers.advanceTo(due + 10);
    EXPECT_FALSE(test.agent.eventHasAlarm(row("e"), distantFuture));
    EXPECT_TRUE(test.agent.eventHasAlarm(row("other"), distantFuture));
}

} // namespace
} // namespace plenzo
