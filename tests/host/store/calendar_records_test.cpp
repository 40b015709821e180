#include "calendar_fixture.h"
#include "host/store/calendar_records.h"

#include <gmock/gmock.h>

#include <set>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace plenzo {

namespace {

std::string toDo(const std::string& uid, const std::string& lines) {
    return "BEGIN:VTODO\nUID:" + uid + "\nSUMMARY:" + uid + "\n" + lines + "END:VTODO\n";
}

std::vector<std::string> titlesOf(const Array& records) {
    std::vector<std::string> titles;
    for (const Value& record : records) {
        titles.emplace_back(record.dictionary()->stringForKey("title").value_or(""));
    }
    return titles;
}

Dictionary onlyRecord(const std::string& components) {
    const Array records = recordsOf(components, windowFrom("2026-03-10T12:00:00Z"));
    EXPECT_EQ(records.size(), 1U);
    return records.empty() ? Dictionary() : *records[0].dictionary();
}

} // namespace

TEST(AnEventRecord, CarriesWhatTheComponentSays) {
    const Dictionary record = onlyRecord(
        "BEGIN:VEVENT\nUID:a b@example.org\nSUMMARY:Lunch\\, late\nLOCATION:Café\n"
        "DESCRIPTION:First\\nsecond\nURL:https://example.org/x\nCATEGORIES:Food,Holiday\n"
        "ATTENDEE;CN=\"Okonjo, Bisi\":mailto:b@example.org\nATTENDEE:mailto:t@example.org\n"
        "DTSTART:20260311T113000Z\nDTEND:20260311T123000Z\nRRULE:FREQ=YEARLY\nEND:VEVENT\n");
    const std::pair<const char*, const char*> texts[] = {
        {"uid", "c~a_20b_40example.org~20260311T113000Z"},
        {"title", "Lunch, late"},
        {"location", "Café"},
        {"notes", "First\nsecond"},
        {"url", "https://example.org/x"},
        {"tags", "Food, Holiday"},
        {"attendees", "Okonjo, Bisi, t@example.org"},
        {"repeat", "every year"},
        {"cuid", "c"},
        {"cal", "Test"}};
    for (const auto& [key, text] : texts) {
        EXPECT_EQ(record.stringForKey(key), text) << key;
    }
    EXPECT_EQ(record.integerForKey("type"), 0);
    EXPECT_TRUE(record.boolForKey("holiday"));
    for (const char* key : {"allDay", "floating", "birthday", "completed", "carry", "rem", "del"}) {
        EXPECT_FALSE(record.contains(key)) << key;
    }
}

TEST(ToDos, AreChosenByDueTimeAndCompletion) {
    const std::string components =
        toDo("undated", "") + toDo("due", "DUE:20260312T100000Z\n") +
        toDo("overdue", "DUE;VALUE=DATE:20250101\n") +
        toDo("starts only", "DTSTART:20260313T100000Z\n") +
        toDo("beyond", "DUE:20260701T100000Z\n") +
        toDo("cancelled", "DUE:20260312T100000Z\nSTATUS:CANCELLED\n") +
        toDo("done long ago", "DUE:20250101T100000Z\nCOMPLETED:20250102T100000Z\n") +
        toDo("done without date", "STATUS:COMPLETED\n") +
        toDo("done now", "DUE:20250101T100000Z\nCOMPLETED:20260310T100000Z\n") +
        toDo("done before its time", "DUE:20260320T100000Z\nPERCENT-COMPLETE:100\n");
    EXPECT_THAT(titlesOf(recordsOf(components, windowFrom("2026-03-10T12:00:00Z"))),
                UnorderedElementsAre("undated", "due", "overdue", "starts only", "done now",
                                     "done before its time"));
}

TEST(AToDoRecord, SaysWhatTheAgentNeedsToCarryAndSortIt) {
    const Dictionary due = onlyRecord(toDo("t", "DUE;VALUE=DATE:20260312\nPRIORITY:3\n"));
    EXPECT_EQ(due.integerForKey("type"), 1);
    EXPECT_EQ(dateText(due, "date"), "2026-03-12T12:00");
    EXPECT_TRUE(due.boolForKey("allDay"));
    EXPECT_TRUE(due.boolForKey("carry"));
    EXPECT_EQ(due.integerForKey("priority"), 3);

    const Dictionary undated = onlyRecord(toDo("t", ""));
    EXPECT_FALSE(undated.contains("date"));
    EXPECT_FALSE(undated.boolForKey("carry"));

    const Dictionary done =
        onlyRecord(toDo("t", "DUE:20260312T100000Z\nCOMPLETED:20260310T090000Z\n"));
    EXPECT_TRUE(done.boolForKey("completed"));
    EXPECT_FALSE(done.boolForKey("carry"));
    EXPECT_EQ(dateText(done, "completionDate"), "2026-03-10T09:00");
}

TEST(ARecurringToDo, GivesOneOverdueOccurrence) {
    const std::string weekly =
        toDo("t", "DTSTART:20260105T090000\nDUE:20260105T170000\nRRULE:FREQ=WEEKLY\n");
    EXPECT_THAT(linesOf(recordsOf(weekly, windowFrom("2026-03-10T12:00:00Z", 14))),
                ElementsAre("2026-03-16T17:00  t floating", "2026-03-23T17:00  t floating",
                            "2026-03-09T17:00  t floating"));
    const std::string lastIsDone = weekly + toDo("t", "RECURRENCE-ID:20260309T090000\n"
                                                      "DTSTART:20260309T090000\n"
                                                      "DUE:20260309T170000\nSTATUS:COMPLETED\n");
    EXPECT_THAT(linesOf(recordsOf(lastIsDone, windowFrom("2026-03-10T12:00:00Z", 7))),
                ElementsAre("2026-03-16T17:00  t floating"));
}

TEST(TheUidsOfRecords, AreDifferentAndSafeInAUrl) {
    const std::string components =
        "BEGIN:VEVENT\nUID:e/?ü~_\nDTSTART:20260310T080000Z\nDTEND:20260314T080000Z\n"
        "RRULE:FREQ=HOURLY;INTERVAL=8;COUNT=20\n"
        "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nREPEAT:2\nDURATION:PT1M\nEND:VALARM\n"
        "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n"
        "BEGIN:VALARM\nUID:x y\nACTION:DISPLAY\nTRIGGER:PT0S\nEND:VALARM\nEND:VEVENT\n" +
        toDo("e/?ü~_", "DUE:20260310T080000Z\n") +
        "BEGIN:VEVENT\nDTSTART:20260310T080000Z\nEND:VEVENT\n"
        "BEGIN:VEVENT\nDTSTART:20260310T080000Z\nEND:VEVENT\n" +
        "BEGIN:VEVENT\nUID:" + std::string(5000, 'x') + "\nDTSTART:20260310T080000Z\nEND:VEVENT\n" +
        "BEGIN:VEVENT\nUID:" + std::string(5001, 'x') + "\nDTSTART:20260310T080000Z\nEND:VEVENT\n";
    std::set<std::string> seen;
    std::size_t count = 0;
    const auto check = [&](std::string_view uid) {
        ++count;
        EXPECT_TRUE(seen.insert(std::string(uid)).second) << uid;
        EXPECT_EQ(uid.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                        "0123456789-._~"),
                  std::string_view::npos)
            << uid;
        EXPECT_LT(uid.size(), 300U);
    };
    for (const Value& value : recordsOf(components, windowFrom("2026-03-10T12:00:00Z"))) {
        check(value.dictionary()->stringForKey("uid").value());
        if (const Array* reminders = value.dictionary()->arrayForKey("rem")) {
            for (const Value& reminder : *reminders) {
                check(reminder.dictionary()->stringForKey("uid").value());
            }
        }
    }
    EXPECT_EQ(count,
              20U * 5U + 5U + 20U * 5U); // 20 occurrences of 5 days, 5 others, 5 reminders each
}

TEST(AnOverriddenOccurrence, KeepsTheUidOfItsInstance) {
    const std::string series = "BEGIN:VEVENT\nUID:e\nDTSTART;TZID=Europe/Berlin:20260310T100000\n"
                               "RRULE:FREQ=DAILY;COUNT=1\nEND:VEVENT\n";
    const std::string changed = "BEGIN:VEVENT\nUID:e\nRECURRENCE-ID:20260310T090000Z\n"
                                "DTSTART;TZID=Asia/Tokyo:20260315T100000\nEND:VEVENT\n";
    EXPECT_EQ(onlyRecord(series).stringForKey("uid"), "c~e~20260310T090000Z");
    EXPECT_EQ(onlyRecord(series + changed).stringForKey("uid"), "c~e~20260310T090000Z");
}

TEST(AnotherRun, GivesTheSameRecords) {
    const std::string components = toDo("t", "DUE:20260312T100000Z\n") +
                                   "BEGIN:VEVENT\nUID:e\nDTSTART:20260310T080000Z\n"
                                   "RRULE:FREQ=DAILY\nBEGIN:VALARM\nTRIGGER:-PT5M\nACTION:AUDIO\n"
                                   "END:VALARM\nEND:VEVENT\n";
    const ExpansionWindow window = windowFrom("2026-03-10T12:00:00Z");
    EXPECT_EQ(recordsOf(components, window), recordsOf(components, window));
}

} // namespace plenzo
