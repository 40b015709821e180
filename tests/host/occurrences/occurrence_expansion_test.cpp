#include "calendar_fixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {

namespace {

std::string event(const std::string& lines) {
    return "BEGIN:VEVENT\nUID:e\nSUMMARY:E\n" + lines + "END:VEVENT\n";
}

std::vector<std::string> lines(const std::string& components, const ExpansionWindow& window) {
    return linesOf(recordsOf(components, window));
}

} // namespace

TEST(AWindow, BeginsAtTheLocalMidnightAndEndsAtOne) {
    const ExpansionWindow window = windowFrom("2026-03-28T23:30:00Z", 2); // 00:30 in Berlin
    EXPECT_EQ(window.from, instant("2026-03-28T23:00:00Z"));
    EXPECT_EQ(window.to, instant("2026-03-30T22:00:00Z")); // 47 hours: the clock moves forward
}

TEST(AWindow, HoldsWhatTouchesItAndNothingElse) {
    const ExpansionWindow window = windowFrom("2026-03-10T12:00:00Z", 1);
    const struct {
        const char* start;
        const char* end;
        bool isShown;
    } rows[] = {
        {"20260309T200000Z", "20260309T230000Z", false}, // ends as the window begins
        {"20260309T200000Z", "20260309T230001Z", true},
        {"20260309T230000Z", "20260309T230000Z", true}, // lasts no time, at the first moment
        {"20260310T225959Z", "20260311T100000Z", true},
        {"20260310T230000Z", "20260311T100000Z", false}, // begins as the window ends
    };
    for (const auto& row : rows) {
        const auto found =
            lines(event(std::string("DTSTART:") + row.start + "\nDTEND:" + row.end + "\n"), window);
        EXPECT_EQ(!found.empty(), row.isShown) << row.start << ' ' << row.end;
    }
}

TEST(ASeries, KeepsItsWallClockThroughDaylightSaving) {
    EXPECT_THAT(lines(event("DTSTART;TZID=Europe/Berlin:20260327T093000\nDURATION:PT1H\n"
                            "RRULE:FREQ=DAILY;COUNT=3\n"),
                      windowFrom("2026-03-20T12:00:00Z")),
                ElementsAre("2026-03-27T08:30 2026-03-27T09:30 E",
                            "2026-03-28T08:30 2026-03-28T09:30 E",
                            "2026-03-29T07:30 2026-03-29T08:30 E"));
}

TEST(ASeries, MovesASkippedTimeForwardAndTakesTheFirstOfARepeatedOne) {
    const auto at = [](const char* day) {
        return lines(event(std::string("DTSTART;TZID=Europe/Berlin:") + day + "T023000\n"),
                     windowFrom("2026-01-01T12:00:00Z", 365));
    };
    EXPECT_THAT(at("20260329"), ElementsAre("2026-03-29T01:30 2026-03-29T01:30 E")); // 03:30 CEST
    EXPECT_THAT(at("20261025"), ElementsAre("2026-10-25T00:30 2026-10-25T00:30 E")); // 02:30 CEST
}

TEST(ASeries, IncludesItsStartThoughTheRuleDoesNotGiveIt) {
    EXPECT_THAT(lines(event("DTSTART:20260304T180000\nRRULE:FREQ=WEEKLY;BYDAY=TH;COUNT=2\n"),
                      windowFrom("2026-03-01T12:00:00Z")),
                ElementsAre("2026-03-04T18:00 2026-03-04T18:00 E floating",
                            "2026-03-05T18:00 2026-03-05T18:00 E floating",
                            "2026-03-12T18:00 2026-03-12T18:00 E floating"));
}

TEST(ASeries, IsTheSameHoweverFarBehindTheWindowItBegan) {
    const std::string rules[] = {"FREQ=WEEKLY;INTERVAL=3;BYDAY=SA,MO",
                                 "FREQ=MONTHLY;INTERVAL=5;BYDAY=-1FR",
                                 "FREQ=YEARLY;INTERVAL=3;BYMONTH=3;BYDAY=2TU",
                                 "FREQ=DAILY;INTERVAL=11",
                                 "FREQ=HOURLY;INTERVAL=35",
                                 "FREQ=MINUTELY;INTERVAL=1000;BYHOUR=0,1,2,3,4,5,6,7,8"};
    for (const std::string& rule : rules) {
        const std::string components =
            event("DTSTART:19990116T083000\nDURATION:PT1H\nRRULE:" + rule + "\n");
        std::vector<std::string> inOnePiece =
            lines(components, windowFrom("1999-01-01T12:00:00Z", 3650));
        std::erase_if(inOnePiece,
                      [](const std::string& line) { return line < "2008-02-29T23:59"; });
        auto jumpedTo = lines(components, windowFrom("2008-03-01T12:00:00Z", 306));
        EXPECT_THAT(jumpedTo, testing::Not(IsEmpty())) << rule;
        EXPECT_EQ(jumpedTo.front(), inOnePiece.front()) << rule;
        inOnePiece.resize(std::min(inOnePiece.size(), jumpedTo.size()));
        jumpedTo.resize(inOnePiece.size());
        EXPECT_EQ(jumpedTo, inOnePiece) << rule;
    }
}

TEST(AnOverride, ReplacesItsInstanceWhereverItMovesIt) {
    const std::string series =
        event("DTSTART;TZID=Europe/Berlin:20260303T100000\nDURATION:PT1H\nRRULE:FREQ=WEEKLY\n");
    const auto with = [&](const std::string& override_) {
        return lines(series + "BEGIN:VEVENT\nUID:e\nSUMMARY:O\n" + override_ + "END:VEVENT\n",
                     windowFrom("2026-03-09T12:00:00Z", 7));
    };
    EXPECT_THAT(with("RECURRENCE-ID:20260310T090000Z\nDTSTART:20260311T070000Z\n"),
                ElementsAre("2026-03-11T07:00 2026-03-11T07:00 O"));
    EXPECT_THAT(with("RECURRENCE-ID:20260310T090000Z\nDTSTART:20260411T070000Z\n"), IsEmpty());
    EXPECT_THAT(
        with("RECURRENCE-ID:20260804T080000Z\nDTSTART:20260311T070000Z\n"),
        ElementsAre("2026-03-10T09:00 2026-03-10T10:00 E", "2026-03-11T07:00 2026-03-11T07:00 O"));
    EXPECT_THAT(
        with("RECURRENCE-ID:20260310T090000Z\nDTSTART:20260310T090000Z\nSTATUS:CANCELLED\n"),
        IsEmpty());
}

TEST(AnOverride, OfThisAndTheFutureMovesAllThatFollow) {
    EXPECT_THAT(
        lines(event("DTSTART;TZID=Europe/Berlin:20260324T090000\nDURATION:PT30M\n"
                    "RRULE:FREQ=WEEKLY;COUNT=4\n") +
                  "BEGIN:VEVENT\nUID:e\nSUMMARY:O\n"
                  "RECURRENCE-ID;RANGE=THISANDFUTURE:20260331T070000Z\n"
                  "DTSTART;TZID=Europe/Berlin:20260401T110000\nDURATION:PT1H\nEND:VEVENT\n",
              windowFrom("2026-03-20T12:00:00Z")),
        ElementsAre("2026-03-24T08:00 2026-03-24T08:30 E", "2026-04-01T09:00 2026-04-01T10:00 O",
                    "2026-04-08T09:00 2026-04-08T10:00 O", "2026-04-15T09:00 2026-04-15T10:00 O"));
}

TEST(AnEventOfSeveralDays, IsOneRecordForEachOfItsDays) {
    EXPECT_THAT(lines(event("DTSTART;VALUE=DATE:20260310\nDTEND;VALUE=DATE:20260313\n"),
                      windowFrom("2026-03-01T12:00:00Z")),
                ElementsAre("2026-03-10T12:00 2026-03-10T12:00 E all-day",
                            "2026-03-11T12:00 2026-03-11T12:00 E all-day",
                            "2026-03-12T12:00 2026-03-12T12:00 E all-day"));
    EXPECT_THAT(lines(event("DTSTART;TZID=Europe/Berlin:20260310T180000\n"
                            "DTEND;TZID=Europe/Berlin:20260312T120000\n"),
                      windowFrom("2026-03-01T12:00:00Z")),
                ElementsAre("2026-03-10T17:00 2026-03-10T23:00 E",
                            "2026-03-10T23:00 2026-03-11T23:00 E",
                            "2026-03-11T23:00 2026-03-12T11:00 E"));
}

TEST(AnEventOfSeveralDays, ShowsOnlyItsDaysInTheWindow) {
    EXPECT_THAT(lines(event("DTSTART;VALUE=DATE:19000101\nDTEND;VALUE=DATE:99990101\n"),
                      windowFrom("2026-03-10T12:00:00Z", 2)),
                ElementsAre("2026-03-10T12:00 2026-03-10T12:00 E all-day",
                            "2026-03-11T12:00 2026-03-11T12:00 E all-day"));
}

TEST(AnEventThatEndsAfterMidnight, StaysOneRecord) {
    EXPECT_THAT(lines(event("DTSTART:20260310T230000\nDTEND:20260311T010000\n"),
                      windowFrom("2026-03-01T12:00:00Z")),
                ElementsAre("2026-03-10T23:00 2026-03-11T01:00 E floating"));
}

} // namespace plenzo
