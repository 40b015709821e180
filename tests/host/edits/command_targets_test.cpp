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

std::string pathOf(std::size_t place) {
    return "/" + std::to_string(place) + ".ics";
}

/// A calendar "c" of several files.
CalendarSet setOfFiles(const std::vector<std::string>& texts) {
    CalendarSet set = setOf("");
    set.calendars[0].files.clear();
    for (const std::string& text : texts) {
        const auto file = std::make_shared<CalendarFile>(*calendarOfText(text).files[0]);
        file->path = pathOf(set.calendars[0].files.size());
        set.calendars[0].files.push_back(file);
    }
    return set;
}

/// An event that begins at that time, or an override of it, and rings then.
std::string eventAt(const std::string& start, const std::string& lines) {
    return "BEGIN:VEVENT\nUID:e\nDTSTART:" + start + "\n" + lines +
           "BEGIN:VALARM\nUID:a\nACTION:DISPLAY\nTRIGGER:PT0S\nEND:VALARM\nEND:VEVENT\n";
}

} // namespace

TEST(ACommandTarget, LiesInTheFileWhoseItemTheRecordsDescribe) {
    const std::string rule = "RRULE:FREQ=DAILY\n";
    const std::string series = eventAt("20260301T090000Z", rule);
    const std::string newer = eventAt("20260301T090000Z", rule + "SEQUENCE:1\n");
    const std::string moved = eventAt("20260312T093000Z", "RECURRENCE-ID:20260312T090000Z\n");
    const std::string movedAll =
        eventAt("20260311T093000Z", "RECURRENCE-ID;RANGE=THISANDFUTURE:20260311T090000Z\n");
    const std::string single = eventAt("20260312T090000Z", "");
    const struct {
        std::pair<std::string, std::string> events;
        std::size_t place;
    } rows[] = {
        {{single, single}, 1},
        {{series, series}, 1},
        {{newer, series}, 0},
        {{series, moved}, 1},
        {{moved, series}, 0},
        {{series + moved, newer}, 0},
        {{series, movedAll + moved}, 1},
        {{series, series + movedAll}, 1},
    };
    const auto window = windowFrom("2026-03-12T00:00:00Z", 1);
    for (const auto& [events, place] : rows) {
        std::vector<std::string> files = {fileAround(events.first), fileAround(events.second)};
        const CalendarSet set = setOfFiles(files);
        const auto target = CommandTargets(set).alarm("c~e~20260312T090000Z~a");
        ASSERT_TRUE(target) << files[0] << files[1];
        EXPECT_EQ(target->occurrence.path, pathOf(place)) << files[0] << files[1];
        EXPECT_EQ(firingsIn(set.calendars[0], window).size(), 1U);

        const EditResult edited =
            acknowledgeAlarm(files[place], *target, editContext("2026-03-12T09:31:00Z"));
        EXPECT_EQ(edited.error, "");
        files[place] = edited.text;
        EXPECT_TRUE(firingsIn(setOfFiles(files).calendars[0], window).empty()) << edited.text;
    }
}

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
