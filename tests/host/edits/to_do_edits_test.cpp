#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/edits/zone_component.h"
#include "host/store/calendar_records.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace plenzo {

namespace {

constexpr const char* now = "2026-03-12T18:00:00Z";

std::string toDo(const std::string& lines) {
    return fileAround("BEGIN:VTODO\nUID:t\n" + lines + "END:VTODO\n");
}

std::string weekly(const std::string& rule = "FREQ=WEEKLY", const std::string& more = "") {
    return toDo("SUMMARY:Bins\nDTSTART:20260305T190000\nDUE:20260305T200000\nRRULE:" + rule + "\n" +
                more);
}

std::string completed(const std::string& text, const std::string& uid,
                      Completion completion = Completion::Done, const char* when = now) {
    const EditResult result =
        completeToDo(text, occurrenceTarget(text, uid), completion, editContext(when));
    EXPECT_EQ(result.error, "");
    return result.text;
}

/// "DATE" of each to-do of the window that is still to be done, and "DATE done".
std::vector<std::string> toDosIn(const std::string& text) {
    std::vector<std::string> lines;
    const auto window = windowFrom("2026-03-12T12:00:00Z", 22);
    for (const Value& record : calendarRecords(setOf(text).calendars[0], window).records) {
        lines.push_back(dateText(*record.dictionary(), "date").substr(0, 10) +
                        (record.dictionary()->boolForKey("completed") ? " done" : ""));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace

TEST(CompletingAToDo, SetsItsStateAndTakesItBack) {
    const std::string before = toDo("STATUS:IN-PROCESS\nPERCENT-COMPLETE:40\nX-A:1\n");
    const std::string after = completed(before, "c~t~todo-undated");
    const std::string marks = "DTSTAMP:20260312T180000Z\nLAST-MODIFIED:20260312T180000Z\n";
    EXPECT_EQ(after, toDo("STATUS:COMPLETED\nPERCENT-COMPLETE:100\nX-A:1\n"
                          "COMPLETED:20260312T180000Z\n" +
                          marks));
    EXPECT_EQ(completed(after, "c~t~todo-undated", Completion::Undone),
              toDo("STATUS:NEEDS-ACTION\nX-A:1\n" + marks));
}

TEST(CompletingARecurringToDo, KeepsWhatWasDoneAndMovesTheSeriesOn) {
    const std::string after = completed(weekly(), "c~t~todo-20260305T190000");
    const std::string marks = "DTSTAMP:20260312T180000Z\nLAST-MODIFIED:20260312T180000Z\n";
    EXPECT_EQ(after, fileAround("BEGIN:VTODO\nUID:t\nSUMMARY:Bins\nDTSTART:20260312T190000\n"
                                "DUE:20260312T200000\nRRULE:FREQ=WEEKLY\n" +
                                marks +
                                "END:VTODO\nBEGIN:VTODO\nUID:t\nSUMMARY:Bins\n"
                                "DTSTART:20260305T190000\nDUE:20260305T200000\n"
                                "RECURRENCE-ID:20260305T190000\nSTATUS:COMPLETED\n"
                                "COMPLETED:20260312T180000Z\nPERCENT-COMPLETE:100\n" +
                                marks + "END:VTODO\n"));
    EXPECT_THAT(toDosIn(after), ElementsAre("2026-03-05 done", "2026-03-12", "2026-03-19",
                                            "2026-03-26", "2026-04-02"));
}

TEST(CompletingARecurringToDo, LowersCountByWhatIsOver) {
    const std::string after = completed(weekly("COUNT=4;FREQ=WEEKLY"), "c~t~todo-20260305T190000");
    EXPECT_THAT(after, HasSubstr("RRULE:COUNT=3;FREQ=WEEKLY\n"));
    EXPECT_THAT(toDosIn(after),
                ElementsAre("2026-03-05 done", "2026-03-12", "2026-03-19", "2026-03-26"));
    const std::string last = completed(weekly("COUNT=2;FREQ=WEEKLY"), "c~t~todo-20260312T190000",
                                       Completion::Done, "2026-03-13T18:00:00Z");
    EXPECT_THAT(last, HasSubstr("COUNT=2"));
    EXPECT_THAT(toDosIn(last), Contains("2026-03-12 done"));
}

TEST(CompletingARecurringToDo, DoesNotLoseAnEarlierOneThatIsStillToBeDone) {
    const std::string after = completed(weekly(), "c~t~todo-20260319T190000");
    EXPECT_THAT(after, HasSubstr("DTSTART:20260305T190000\nDUE:20260305T200000\nRRULE"));
    EXPECT_THAT(toDosIn(after), ElementsAre("2026-03-05", "2026-03-12", "2026-03-19 done",
                                            "2026-03-26", "2026-04-02"));
}

TEST(CompletingARecurringToDo, StaysWhereMovingWouldChangeWhatFollows) {
    const char* rows[] = {
        // The 31st would become the 30th for good.
        "DTSTART;VALUE=DATE:20260131\nRRULE:RSCALE=GREGORIAN;FREQ=MONTHLY;SKIP=BACKWARD\n",
        // The first is none of the rule's own, so that COUNT counts otherwise.
        "DTSTART;VALUE=DATE:20260131\nRRULE:FREQ=WEEKLY;BYDAY=MO\nRDATE;VALUE=DATE:20260131\n"};
    for (const std::string lines : rows) {
        const std::string before = toDo(lines);
        const std::string after = completed(before, "c~t~todo-20260131");
        EXPECT_THAT(after, HasSubstr("DTSTART;VALUE=DATE:20260131\nRRULE"));
        auto expected = toDosIn(before);
        std::erase(expected, "2026-01-31");
        auto left = toDosIn(after);
        std::erase(left, "2026-01-31 done");
        EXPECT_FALSE(left.empty());
        for (const std::string& one : expected) {
            EXPECT_THAT(left, Contains(one));
        }
    }
}

TEST(CompletingARecurringToDo, CanBeTakenBack) {
    const std::string done = completed(weekly(), "c~t~todo-20260312T190000");
    const std::string undone = completed(done, "c~t~todo-20260312T190000", Completion::Undone);
    EXPECT_THAT(toDosIn(done), Contains("2026-03-12 done"));
    EXPECT_THAT(toDosIn(undone), Contains("2026-03-12"));
    EXPECT_THAT(undone, Not(HasSubstr("COMPLETED")));
}

TEST(CompletingAnEvent, IsRefused) {
    const std::string text = fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260312T090000Z\n"
                                        "END:VEVENT\n");
    EXPECT_NE(completeToDo(text, occurrenceTarget(text, "c~e~20260312T090000Z"), Completion::Done,
                           editContext(now))
                  .error,
              "");
}

TEST(AddingAComponent, PutsItAtTheEndWithTheLineEndingsOfTheFile) {
    const std::string added = "BEGIN:VEVENT\nUID:n\nSUMMARY:" + std::string(80, 'x') +
                              "\nDTSTART:20260312T090000Z\nEND:VEVENT";
    const EditResult result =
        addComponent("BEGIN:VCALENDAR\r\nX-A:1\r\nEND:VCALENDAR\r\n\r\n", added);
    EXPECT_EQ(result.text,
              "BEGIN:VCALENDAR\r\nX-A:1\r\nBEGIN:VEVENT\r\nUID:n\r\nSUMMARY:" +
                  std::string(67, 'x') + "\r\n " + std::string(13, 'x') +
                  "\r\nDTSTART:20260312T090000Z\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n\r\n");
    const EditResult inNew = addComponent("", added);
    EXPECT_EQ(readCalendarText(inNew.text).items.size(), 1U);
    EXPECT_TRUE(readCalendarText(inNew.text).problems.empty());
    EXPECT_NE(addComponent(inNew.text, added).error, "");
}

TEST(AddingAZone, HappensOnceAndMovesNoTime) {
    const SystemSeconds from = instant("2026-01-01T00:00:00Z");
    const std::string berlin = zoneComponent("Europe/Berlin", from);
    const EditResult first = addZone("", berlin);
    EXPECT_EQ(addZone(first.text, berlin).text, first.text);
    const EditResult second = addZone(first.text, zoneComponent("Asia/Tokyo", from));
    EXPECT_THAT(second.text, HasSubstr("TZID:Asia/Tokyo\r\n"));
    EXPECT_EQ(zoneComponent("No/Zone", from), "");
    EXPECT_NE(addZone("", "BEGIN:VEVENT\nUID:a\nEND:VEVENT\n").error, "");

    // Under a name that nobody knows, so that the rules themselves are read.
    std::string renamed = second.text;
    renamed.replace(renamed.find("TZID:Europe/Berlin"), 18, "TZID:Own/Zone");
    const std::string event = "BEGIN:VEVENT\nUID:a\nDTSTART;TZID=Own/Zone:20260712T100000\n"
                              "RDATE;TZID=Own/Zone:20261212T100000\nEND:VEVENT\n";
    const auto items = readCalendarText(addComponent(renamed, event).text).items;
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(instantOf(*items[0].start, CalendarZone()), instant("2026-07-12T08:00:00Z"));
    EXPECT_EQ(instantOf(items[0].recurrence.extraDates[0].start, CalendarZone()),
              instant("2026-12-12T09:00:00Z"));
}

TEST(AddingAComponent, RefusesWhatIsNoWholeItem) {
    for (const char* added :
         {"", "UID:n\n", "BEGIN:VEVENT\nUID:n\n", "BEGIN:VEVENT\nEND:VEVENT\n",
          "BEGIN:VTIMEZONE\nUID:n\nEND:VTIMEZONE\n",
          "BEGIN:VEVENT\nUID:n\nEND:VEVENT\nBEGIN:VEVENT\nUID:m\nEND:VEVENT\n",
          "BEGIN:VEVENT\nUID:n\nEND:VEVENT\nEND:VCALENDAR\nBEGIN:VCALENDAR\n"}) {
        EXPECT_NE(addComponent(fileAround(""), added).error, "") << added;
    }
    EXPECT_NE(addComponent("X", "BEGIN:VEVENT\nUID:n\nEND:VEVENT\n").error, "");
}

} // namespace plenzo
