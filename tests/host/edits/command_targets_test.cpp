#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/edits/command_targets.h"
#include "host/store/calendar_records.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace plenzo {

namespace {

int checkAll(const CalendarSet& set, const ExpansionWindow& window) {
    const CommandTargets targets(set);
    int count = 0;
    for (const Calendar& calendar : set.calendars) {
        for (const Value& value : calendarRecords(calendar, window).records) {
            const Dictionary& record = *value.dictionary();
            const std::string uid(record.stringForKey("uid").value_or(""));
            const auto target = targets.occurrence(uid);
            EXPECT_TRUE(target && targets.calendar(uid) == &calendar) << uid;
            EXPECT_TRUE(target && std::filesystem::exists(target->path)) << uid;
            const Array* reminders = record.arrayForKey("rem");
            for (std::size_t index = 0; reminders != nullptr && index < reminders->size();
                 ++index) {
                const Dictionary& entry = *(*reminders)[index].dictionary();
                EXPECT_TRUE(targets.alarm(entry.stringForKey("uid").value_or(""))) << uid;
                ++count;
            }
        }
    }
    return count;
}

} // namespace

TEST(ACommandTarget, IsFoundForEveryIdentifierThatTheRecordsHold) {
    const CalendarSet set =
        loadCalendars({PLENZO_TEST_DATA "/calendars", PLENZO_TEST_DATA "/../../samples"});
    EXPECT_GT(checkAll(set, windowFrom("2026-03-10T12:00:00Z", 60)), 20);
}

TEST(ACommandTarget, NamesTheItemTheOccurrenceAndTheAlarm) {
    const std::string uid(400, 'u');
    const std::string text = fileAround(
        "BEGIN:VEVENT\nUID:" + uid +
        "\nDTSTART;TZID=Europe/Berlin:20260312T100000\nDURATION:P2D\nBEGIN:VALARM\n"
        "UID:bell@home\nACTION:DISPLAY\nTRIGGER:-PT5M\nREPEAT:2\nDURATION:PT1M\nEND:VALARM\n"
        "END:VEVENT\n");
    const auto uids = reminderUidsIn(text, windowFrom("2026-03-10T12:00:00Z"));
    ASSERT_EQ(uids.size(), 3U);
    for (int repetition = 0; repetition < 3; ++repetition) {
        const AlarmTarget target = alarmTarget(text, uids[static_cast<std::size_t>(repetition)]);
        EXPECT_EQ(target.repetition, repetition);
        EXPECT_EQ(target.alarmUid, "bell@home");
        EXPECT_EQ(target.occurrence.itemUid, uid);
        EXPECT_EQ(target.occurrence.path, "/c.ics");
        EXPECT_EQ(instantOf(*target.occurrence.identity, CalendarZone()),
                  instant("2026-03-12T09:00:00Z"));
    }
}

TEST(ACommandTarget, IsNotThereForWhatNobodyMade) {
    const CalendarSet set =
        setOf(fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260312T090000Z\nBEGIN:VALARM\nUID:a\n"
                         "ACTION:DISPLAY\nTRIGGER:PT0S\nEND:VALARM\nEND:VEVENT\n"));
    const CommandTargets targets(set);
    EXPECT_TRUE(targets.occurrence("c~e~20260312T090000Z"));
    EXPECT_TRUE(targets.occurrence("c~e~20260312T090000Z~20260313"));
    for (const char* uid :
         {"", "~", "~~~~", "c", "c~e", "x~e~20260312T090000Z", "c~x~20260312T090000Z",
          "c~e~20260312T09000Z", "c~e~20261312T090000Z", "c~e~20260312Z", "c~e~-0260312",
          "c~e~todo-20260312T090000Z", "c~e~20260312T090000Z~a", "c~e~20260312T090000Z~20260313~a",
          "c~e~2026031 ", "c~e~20260312T090060Z"}) {
        EXPECT_FALSE(targets.occurrence(uid)) << uid;
    }
    EXPECT_TRUE(targets.alarm("c~e~20260312T090000Z~a~r2"));
    for (const char* uid :
         {"", "c~e~20260312T090000Z", "c~e~20260312T090000Z~b", "c~e~20260312T090000Z~a~2",
          "c~e~20260312T090000Z~a~r", "c~e~20260312T090000Z~a~r0",
          "c~e~20260312T090000Z~a~r99999999999", "c~e~20260312T090000Z~a~r1~"}) {
        EXPECT_FALSE(targets.alarm(uid)) << uid;
    }
}

} // namespace plenzo
