#include "core/shown_alarms.h"
#include "core/windowed_agent.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// Each test sees "a" with three alarms and "b" with one, which have all fired.
class ARow : public testing::Test {
protected:
    void SetUp() override {
        test.launch();
        test.pushFull(
            {recordOf("a", {"early", "middle", "late"}, Instant()), recordOf("b", {"only"})});
        test.timers.advanceTo(start);
        test.told();
    }

    /// With a reminder at the start for each uid.
    Dictionary recordOf(const std::string& uid, const std::vector<std::string>& reminderUIDs,
                        std::optional<Instant> acknowledged = std::nullopt) const {
        Array reminders;
        for (const std::string& reminderUID : reminderUIDs) {
            Dictionary reminder = relativeReminder(reminderUID, 0);
            if (acknowledged) {
                reminder.set(keys::ack, acknowledged->date());
            }
            reminders.append(Value(reminder));
        }
        return event(uid, start, reminders);
    }
    /// The uids of the reminders.
    [[nodiscard]] std::vector<std::string> rows() const {
        std::vector<std::string> uids;
        for (const DisplayedAlarm& row : test.alarmWindow.rows) {
            uids.emplace_back(row.alarm.reminderText(keys::uid));
        }
        return uids;
    }

    WindowedAgent test;
    const Instant start = test.clock.now() + 60;
};

TEST_F(ARow, OfADeletedOccurrenceGoesAway) {
    test.pushDelta({deletionNotice("a"), deletionNotice("unknown")});
    EXPECT_THAT(rows(), ElementsAre("only"));
    EXPECT_THAT(test.told(), UnorderedElementsAre("remove a", "remove unknown", "delta 2"));
}

TEST_F(ARow, OfAChangedOccurrenceGoesAwayWhenItsReminderIsGone) {
    test.pushDelta({deletionNotice("a"), recordOf("a", {"middle", "new"})});
    EXPECT_THAT(rows(), UnorderedElementsAre("middle", "only"));
    EXPECT_THAT(test.told(), ElementsAre("remove a", "delta 2")) << "removed before it is added";
}

TEST_F(ARow, OfAChangedOccurrenceGoesAwayWhenItWasAcknowledgedSinceItFired) {
    test.pushDelta({recordOf("a", {"early", "middle", "late"}, start - 1), deletionNotice("a")});
    EXPECT_EQ(rows().size(), 4U) << "acknowledged before";
    test.pushDelta({deletionNotice("a"), recordOf("a", {"early", "middle", "late"}, start)});
    EXPECT_EQ(rows().size(), 4U) << "at the very moment";
    test.pushDelta({deletionNotice("a"), recordOf("a", {"early", "middle", "late"}, start + 1)});
    EXPECT_THAT(rows(), ElementsAre("only"));
}

TEST_F(ARow, StaysWhenARecordComesWithoutANoticeOrAnotherOccurrenceGoes) {
    test.pushDelta({recordOf("a", {}), deletionNotice("c"), recordOf("c", {})});
    EXPECT_EQ(rows().size(), 4U);
}

TEST_F(ARow, StaysWhenEverythingElseIsReplaced) {
    test.pushFull({});
    EXPECT_EQ(rows().size(), 4U);
    EXPECT_THAT(test.told(), ElementsAre("all 0"));
    test.pushFull({deletionNotice("a"), recordOf("b", {})});
    EXPECT_EQ(rows().size(), 4U) << "a notice means nothing in a full update";
}

TEST_F(ARow, IsNotTouchedByANoticeWithoutAnIdentity) {
    test.pushFull({event("", start + 60, {relativeReminder("of no name", 0)})});
    test.timers.advanceTo(start + 60);
    ASSERT_EQ(rows().size(), 5U);
    test.pushDelta({Dictionary{{keys::del, true}}, Dictionary{{keys::del, true}, {keys::uid, 7}}});
    EXPECT_EQ(rows().size(), 5U);
    test.pushDelta({deletionNotice("")});
    EXPECT_EQ(rows().size(), 4U);
}

TEST(ANotificationOfTheHostsRecord, GoesAwayAsARowDoes) {
    WindowedAgent test;
    test.launch();
    test.useNotifications();
    const Instant start = test.clock.now() + 60;
    const auto recordOf = [start](const std::string& uid, const std::string& reminderUID) {
        return event(uid, start, {relativeReminder(reminderUID, 0)});
    };
    const Array records{recordOf("changed", "r"), recordOf("deleted", "r"), recordOf("none", "r"),
                        recordOf("same", "r")};
    test.pushFull(records);
    test.timers.advanceTo(start);
    const auto shown = [&test] {
        std::vector<std::string> titles;
        for (const auto& [identifier, notification] : test.notifications.deliveredNotifications()) {
            titles.push_back(notification.title);
        }
        return titles;
    };
    test.pushFull(records);
    ASSERT_THAT(shown(), ElementsAre("changed", "deleted", "none", "same"));
    test.pushDelta({deletionNotice("changed"), recordOf("changed", "another"),
                    deletionNotice("deleted"), recordOf("none", "another"), deletionNotice("same"),
                    recordOf("same", "r"), Dictionary{{keys::del, true}}});
    EXPECT_THAT(shown(), ElementsAre("none", "same"));
}

TEST(AnAlarm, IsCanceledOnlyByARecordOfItsOccurrence) {
    const Instant fired = utc(2026, 3, 10, 12);
    Alarm alarm;
    alarm.fireDate = CalendarDate(fired);
    alarm.reminderDict = relativeReminder("r", 0);
    const auto record = [](const std::string& uid, const Array& reminders) {
        return Dictionary{{keys::uid, uid}, {keys::rem, reminders}};
    };
    const auto acknowledgedAt = [](Instant date) {
        Dictionary reminder = relativeReminder("r", 0);
        reminder.set(keys::ack, date.date());
        return reminder;
    };
    alarm.eventDict = std::make_shared<Dictionary>(record("e", {}));
    EXPECT_TRUE(alarmIsCanceledByEventDict(alarm, record("e", {})));
    EXPECT_FALSE(alarmIsCanceledByEventDict(alarm, record("f", {})));
    EXPECT_FALSE(alarmIsCanceledByEventDict(alarm, record("e", {relativeReminder("r", 5)})));
    EXPECT_FALSE(alarmIsCanceledByEventDict(alarm, record("e", {acknowledgedAt(fired)})));
    EXPECT_TRUE(alarmIsCanceledByEventDict(alarm, record("e", {acknowledgedAt(fired + 0.001)})));
    EXPECT_FALSE(alarmIsCanceledByEventDict(
        alarm, record("e", {"no entry", relativeReminder("r", 0), acknowledgedAt(fired + 1)})))
        << "the first entry of that identity counts";
}

Dictionary record(const std::string& path, int type) {
    const auto* first = reinterpret_cast<const std::byte*>(path.data());
    Dictionary reminder = relativeReminder("r", 0, type);
    reminder.set(keys::book, Value::fromData({first, path.size()}));
    return event("e", utc(2026, 3, 11), {reminder});
}

class TheAccessToAFile : public testing::Test {
protected:
    WindowedAgent test;
};

TEST_F(TheAccessToAFile, IsKeptWhenARecordComesThatOpensIt) {
    test.fileAccess.files = {"/opened", "/shown", "/deleted", "/there already"};
    test.fileAccess.kept = {"/there already"};
    Dictionary notice = record("/deleted", 4);
    notice.set(keys::del, true);
    test.pushFull({record("/opened", 4), record("/shown", 0), record("/there already", 4),
                   record("/missing", 4), notice, event("f", utc(2026, 3, 11), {"no entry"})});
    EXPECT_THAT(test.fileAccess.kept, UnorderedElementsAre("/opened", "/there already"));
    EXPECT_EQ(test.fileAccess.saveCount, 1);
    test.pushDelta({record("/opened", 4), record("/shown", 4)});
    EXPECT_EQ(test.fileAccess.saveCount, 2) << "that of the first is there already";
}

/// Records of files that are there.
Array manyRecords(FakeFileAccess& fileAccess, int count) {
    Array records;
    for (int number = 0; number < count; ++number) {
        const std::string path = "/plan " + std::to_string(number);
        fileAccess.files.insert(path);
        records.append(record(path, 4));
    }
    return records;
}

TEST_F(TheAccessToAFile, IsKeptOfVeryManyInTurnsAndWrittenOnce) {
    test.pushFull(manyRecords(test.fileAccess, 5000));
    EXPECT_GT(test.fileAccess.saveCount, 0);
    EXPECT_LT(test.fileAccess.saveCount, 500) << "the main loop goes on in between";
    test.timers.fireDue();
    EXPECT_EQ(test.fileAccess.kept.size(), 5000U);
    EXPECT_EQ(test.fileAccess.batchCount, 1);
}

TEST_F(TheAccessToAFile, IsKeptOfAllBeforeTheEndOfTheSession) {
    test.agent.applicationDidFinishLaunching();
    test.pushFull(manyRecords(test.fileAccess, 5000));
    test.powerNotices.shutDown();
    EXPECT_EQ(test.fileAccess.kept.size(), 5000U);
}

TEST_F(TheAccessToAFile, IsKeptOfThoseThatAFullUpdateReplacesNoLonger) {
    test.pushFull(manyRecords(test.fileAccess, 5000));
    const int savedCount = test.fileAccess.saveCount;
    test.fileAccess.files.insert("/new");
    test.pushFull({record("/new", 4)});
    test.timers.fireDue();
    EXPECT_EQ(test.fileAccess.saveCount, savedCount + 1);
}

TEST_F(TheAccessToAFile, IsAskedForOnceForTheOccurrencesOfOneEvent) {
    Array records;
    for (int day = 0; day < 1000; ++day) {
        records.append(record("/missing", 4));
    }
    test.pushFull(std::move(records));
    EXPECT_EQ(test.fileAccess.resolveCount, 1);
}

} // namespace
} // namespace plenzo
