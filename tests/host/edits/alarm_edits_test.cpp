#include "calendar_fixture.h"
#include "edit_fixture.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace plenzo {

namespace {

/// A weekly event at 10:00 in Berlin with an alarm ten minutes before.
std::string weekly(const std::string& alarmLines = "", const std::string& eventLines = "") {
    return fileAround("BEGIN:VEVENT\nUID:e\nSUMMARY:Weekly\nDTSTART;TZID=Europe/Berlin:"
                      "20260305T100000\nDTEND;TZID=Europe/Berlin:20260305T110000\n"
                      "RRULE:FREQ=WEEKLY\nSEQUENCE:4\nX-KEPT;X=1:as it is\n" +
                      eventLines +
                      "BEGIN:VALARM\nUID:a\nACTION:DISPLAY\nDESCRIPTION:Soon\n"
                      "TRIGGER:-PT10M\n" +
                      alarmLines + "END:VALARM\nEND:VEVENT\n");
}

/// An event every hour that rings when it begins.
std::string hourly(const std::string& alarmLines) {
    return fileAround("BEGIN:VEVENT\nUID:d\nDTSTART:20260301T100000Z\nDURATION:PT1H\n"
                      "RRULE:FREQ=HOURLY\nBEGIN:VALARM\nUID:a\nACTION:DISPLAY\nTRIGGER:PT0S\n" +
                      alarmLines + "END:VALARM\nEND:VEVENT\n");
}

const std::string ofTwelfth = "c~e~20260312T090000Z~a";

std::string done(const EditResult& result) {
    EXPECT_EQ(result.error, "");
    return result.text;
}

std::string acknowledged(const std::string& text, const std::string& uid, const std::string& now) {
    return done(acknowledgeAlarm(text, alarmTarget(text, uid), editContext(now)));
}

std::string snoozed(const std::string& text, const std::string& uid, const std::string& until,
                    const std::string& now) {
    return done(snoozeAlarm(text, alarmTarget(text, uid), instant(until), editContext(now)));
}

std::vector<std::string> firings(const std::string& text) {
    return firingsIn(text, windowFrom("2026-03-05T00:00:00Z", 25));
}

} // namespace

TEST(AcknowledgingAnAlarm, OfASeriesMarksTheSeriesAloneAndKeepsEveryOtherByte) {
    const std::string before = weekly("ACKNOWLEDGED:20260305T090000Z\n");
    const std::string after = acknowledged(before, ofTwelfth, "2026-03-12T08:51:07Z");
    EXPECT_EQ(after, weekly("ACKNOWLEDGED:20260312T085107Z\n",
                            "DTSTAMP:20260312T085107Z\nLAST-MODIFIED:20260312T085107Z\n"));
    EXPECT_THAT(firings(after), ElementsAre("2026-03-19T09:00 at 2026-03-19T08:50",
                                            "2026-03-26T09:00 at 2026-03-26T08:50"));
}

TEST(AcknowledgingAnAlarm, BeforeItsMomentIsThatMomentAndASecond) {
    const std::string before = weekly("ACKNOWLEDGED:20260305T090000Z\n");
    const std::string after = acknowledged(before, ofTwelfth, "2026-03-11T08:00:00Z");
    EXPECT_THAT(after, HasSubstr("ACKNOWLEDGED:20260312T085001Z\n"));
    EXPECT_THAT(firings(after), ElementsAre("2026-03-19T09:00 at 2026-03-19T08:50",
                                            "2026-03-26T09:00 at 2026-03-26T08:50"));
}

TEST(AcknowledgingAnAlarm, AfterTheNextOneWentOffLeavesThatOneAlone) {
    const std::string before = hourly("ACKNOWLEDGED:20260310T090500Z\n");
    const std::string after =
        acknowledged(before, "c~d~20260310T100000Z~a", "2026-03-10T12:30:00Z");
    EXPECT_THAT(after, HasSubstr("ACKNOWLEDGED:20260310T100001Z\n"));
    EXPECT_THAT(after, Not(HasSubstr("RECURRENCE-ID")));
}

TEST(AcknowledgingAnAlarm, WhileAnEarlierOneIsOpenMakesAnOverrideForItAlone) {
    const std::string before = hourly("ACKNOWLEDGED:20260310T090500Z\n");
    const std::string after =
        acknowledged(before, "c~d~20260310T120000Z~a", "2026-03-10T12:01:00Z");
    EXPECT_THAT(after, HasSubstr("RECURRENCE-ID:20260310T120000Z\n"));
    const auto window = windowFrom("2026-03-10T00:00:00Z", 1);
    auto expected = firingsIn(before, window);
    EXPECT_EQ(std::erase(expected, "2026-03-10T12:00 at 2026-03-10T12:00"), 1U);
    EXPECT_EQ(firingsIn(after, window), expected);
}

TEST(AcknowledgingAnAlarm, OfASingleEventOrAnOverrideMarksItself) {
    const std::string single = fileAround("BEGIN:VEVENT\nUID:s\nDTSTART:20260310T100000Z\n"
                                          "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\n"
                                          "END:VALARM\nEND:VEVENT\n");
    const auto window = windowFrom("2026-03-10T00:00:00Z", 3);
    const auto uids = reminderUidsIn(single, window);
    ASSERT_EQ(uids.size(), 1U);
    const std::string after = acknowledged(single, uids[0], "2026-03-10T09:55:00Z");
    EXPECT_THAT(firingsIn(after, window), ElementsAre());
    const std::string twice = acknowledged(after, uids[0], "2026-03-10T09:58:00Z");
    EXPECT_THAT(twice, HasSubstr("ACKNOWLEDGED:20260310T095800Z"));
    EXPECT_THAT(twice, Not(HasSubstr("095501Z")));
}

TEST(AcknowledgingAnAlarm, FindsTheItemHoweverItsUidIsWritten) {
    const auto window = windowFrom("2026-03-10T00:00:00Z", 3);
    for (const char* uid :
         {"UID:a\\xb", "UID:a\\", "UID:a\\:b", "UID:a\\\\nb", "UID:a\\nb", "UID:x\\;y\\",
          "UID : spaced", "uid:Low", "UID:", "X-NO:UID", "UID:\xFF\xFE", "UID:fol\n ded",
          "UID;X-P=\"q:r\":abc", "UID;X-P=q:r:abc", "UID;X-P=\"q:abc", "UID:a\x01\x7F",
          "UID:\xC3\xBC"}) {
        const auto event = [](const std::string& uidLine, const std::string& start) {
            return "BEGIN:VEVENT\n" + uidLine + "\nDTSTART:" + start +
                   "\nBEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\nEND:VEVENT\n";
        };
        const std::string other = event("UID:axb", "20260311T100000Z");
        const std::string text = fileAround(other + event(uid, "20260310T100000Z"));
        const auto alarms = reminderUidsIn(text, window);
        EXPECT_EQ(alarms.size(), 2U) << uid;
        for (const std::string& alarm : alarms) {
            const EditResult result = acknowledgeAlarm(text, alarmTarget(text, alarm),
                                                       editContext("2026-03-11T09:55:00Z"));
            EXPECT_EQ(result.error, "") << uid;
            EXPECT_EQ(firingsIn(result.text, window).size(), 1U) << uid;
        }
    }
}

TEST(SnoozingAnAlarm, OfTheFirstOfManyThatWereMovedTogetherLeavesTheOthersMoved) {
    const std::string moved =
        "BEGIN:VEVENT\nUID:e\nRECURRENCE-ID;TZID=Europe/"
        "Berlin;RANGE=THISANDFUTURE:20260312T100000\n"
        "DTSTART;TZID=Europe/Berlin:20260312T113000\nDTEND;TZID=Europe/Berlin:20260312T120000\n"
        "BEGIN:VALARM\nUID:a\nACTION:DISPLAY\nTRIGGER:-PT10M\nEND:VALARM\nEND:VEVENT\n";
    const std::string series = weekly();
    const std::string before = series.substr(0, series.size() - 14) + moved + "END:VCALENDAR\n";
    auto expected = firings(before);
    ASSERT_THAT(expected, Contains("2026-03-12T10:30 at 2026-03-12T10:20"));
    const std::string after =
        snoozed(before, ofTwelfth, "2026-03-12T11:00:00Z", "2026-03-12T10:21:00Z");
    EXPECT_THAT(after, HasSubstr("RECURRENCE-ID;TZID=Europe/Berlin:20260312T100000\n"));
    EXPECT_THAT(after, HasSubstr("RANGE=THISANDFUTURE:20260319T100000\n"
                                 "DTSTART;TZID=Europe/Berlin:20260319T113000\n"
                                 "DTEND;TZID=Europe/Berlin:20260319T120000\n"));
    std::replace(expected.begin(), expected.end(),
                 std::string("2026-03-12T10:30 at 2026-03-12T10:20"),
                 std::string("2026-03-12T10:30 at 2026-03-12T11:00"));
    EXPECT_EQ(firings(after), expected);
    // And the next one in its turn.
    const std::string later =
        snoozed(after, "c~e~20260319T090000Z~a", "2026-03-19T11:00:00Z", "2026-03-19T10:21:00Z");
    std::replace(expected.begin(), expected.end(),
                 std::string("2026-03-19T10:30 at 2026-03-19T10:20"),
                 std::string("2026-03-19T10:30 at 2026-03-19T11:00"));
    EXPECT_EQ(firings(later), expected);
}

TEST(SnoozingAnAlarm, OfADamagedTextIsForTextsThatNoFileGets) {
    const std::string whole = weekly();
    const std::string withoutEnd = whole.substr(0, whole.size() - 14);
    const std::string unended = withoutEnd.substr(0, withoutEnd.size() - 1);
    const std::string half = "BEGIN:VEVENT\nUID:half\nBEGIN:VALARM\nEND:VEVENT\n";
    for (const std::string& text :
         {whole + "X-STRAY:1\n", withoutEnd, unended, withoutEnd + half + "END:VCALENDAR\n",
          "X-STRAY:1\n" + whole, withoutEnd + std::string("X-NUL:\0\n", 9) + "END:VCALENDAR\n"}) {
        const AlarmTarget target = alarmTarget(text, ofTwelfth);
        const SystemSeconds until = instant("2026-03-12T09:30:00Z");
        EditContext context = editContext("2026-03-12T08:51:00Z");
        EXPECT_NE(snoozeAlarm(text, target, until, context).error, "") << text;
        context.toleratesDamage = true;
        const std::string after = done(snoozeAlarm(text, target, until, context));
        auto expected = firings(text);
        std::replace(expected.begin(), expected.end(),
                     std::string("2026-03-12T09:00 at 2026-03-12T08:50"),
                     std::string("2026-03-12T09:00 at 2026-03-12T09:30"));
        EXPECT_EQ(firings(after), expected) << after;
        EXPECT_EQ(readCalendarText(after).problems.size(), readCalendarText(text).problems.size());
    }
}

TEST(SnoozingAnAlarm, OfAnEventThatIsAllOfItsFileKeepsWhatIsThere) {
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string newline : {"\n", "\r\n"}) {
        std::string event;
        for (const char* line :
             {"BEGIN:VEVENT", "UID:e", "DTSTART:20260305T090000Z", "RRULE:FREQ=WEEKLY",
              "BEGIN:VALARM", "UID:a", "ACTION:DISPLAY", "TRIGGER:-PT10M", "END:VALARM"}) {
            event += line + newline;
        }
        event += "END:VEVENT";
        for (const std::string& before : {event, mark + event, event + newline,
                                          event + newline.substr(0, newline.size() - 1)}) {
            const std::string after =
                snoozed(before, ofTwelfth, "2026-03-12T09:30:00Z", "2026-03-12T08:51:00Z");
            EXPECT_THAT(after, testing::StartsWith((before.starts_with(mark) ? mark : "") + event +
                                                   newline + "BEGIN:VEVENT" + newline));
            EXPECT_THAT(firings(after), ElementsAre("2026-03-05T09:00 at 2026-03-05T08:50",
                                                    "2026-03-12T09:00 at 2026-03-12T09:30",
                                                    "2026-03-19T09:00 at 2026-03-19T08:50",
                                                    "2026-03-26T09:00 at 2026-03-26T08:50"));
        }
    }
}

TEST(SnoozingAnAlarm, OfASeriesGivesTheOccurrenceAnOverride) {
    const std::string before = weekly("", "EXDATE;TZID=Europe/Berlin:20260402T100000\n");
    const std::string after =
        snoozed(before, ofTwelfth, "2026-03-12T09:30:00Z", "2026-03-12T08:51:00Z");
    const std::string override =
        "BEGIN:VEVENT\nUID:e\nSUMMARY:Weekly\nDTSTART;TZID=Europe/Berlin:20260312T100000\n"
        "DTEND;TZID=Europe/Berlin:20260312T110000\nSEQUENCE:4\nX-KEPT;X=1:as it is\n"
        "RECURRENCE-ID;TZID=Europe/Berlin:20260312T100000\nDTSTAMP:20260312T085100Z\n"
        "LAST-MODIFIED:20260312T085100Z\n"
        "BEGIN:VALARM\nUID:a\nACTION:DISPLAY\nDESCRIPTION:Soon\nTRIGGER:-PT10M\n"
        "ACKNOWLEDGED:20260312T085100Z\nEND:VALARM\n"
        "BEGIN:VALARM\nUID:new-1\nACTION:DISPLAY\nDESCRIPTION:Soon\n"
        "TRIGGER;VALUE=DATE-TIME:20260312T093000Z\nRELATED-TO;RELTYPE=SNOOZE:a\n"
        "END:VALARM\nEND:VEVENT\n";
    std::string expected = before;
    expected.insert(expected.find("END:VCALENDAR"), override);
    EXPECT_EQ(after, expected);
    EXPECT_THAT(firings(after), ElementsAre("2026-03-05T09:00 at 2026-03-05T08:50",
                                            "2026-03-12T09:00 at 2026-03-12T09:30",
                                            "2026-03-19T09:00 at 2026-03-19T08:50",
                                            "2026-03-26T09:00 at 2026-03-26T08:50"));
}

TEST(SnoozingAnAlarm, AgainReplacesTheSnoozeAndDismissingTakesItAway) {
    const std::string once =
        snoozed(weekly(), ofTwelfth, "2026-03-12T09:30:00Z", "2026-03-12T08:51:00Z");
    for (const std::string& uid : {ofTwelfth, std::string("c~e~20260312T090000Z~new-1")}) {
        const std::string twice =
            snoozed(once, uid, "2026-03-12T10:00:00Z", "2026-03-12T09:31:00Z");
        EXPECT_THAT(firings(twice), Contains("2026-03-12T09:00 at 2026-03-12T10:00"));
        EXPECT_THAT(firings(twice), Not(Contains("2026-03-12T09:00 at 2026-03-12T09:30")));
        EXPECT_THAT(twice, HasSubstr("ACKNOWLEDGED:20260312T093100Z"));
        EXPECT_EQ(firings(twice).size(), 4U);
        const std::string dismissed = acknowledged(twice, uid, "2026-03-12T10:01:00Z");
        EXPECT_THAT(dismissed, Not(HasSubstr("SNOOZE")));
        EXPECT_THAT(dismissed, HasSubstr("ACKNOWLEDGED:20260312T100100Z"));
        EXPECT_EQ(firings(dismissed).size(), 3U);
    }
}

TEST(ASnoozeOfAnotherProgram, IsKnownByItsRelation) {
    const std::string before = fileAround(
        "BEGIN:VEVENT\nUID:s\nDTSTART:20260312T100000Z\nBEGIN:VALARM\nUID:a\nACTION:DISPLAY\n"
        "TRIGGER:-PT5M\nACKNOWLEDGED:20260312T095500Z\nEND:VALARM\nBEGIN:VALARM\nUID:z\n"
        "RELATED-TO:other\nRELATED-TO;X-A=1;reltype=snooze:a\nACTION:DISPLAY\n"
        "TRIGGER;VALUE=DATE-TIME:20260312T103000Z\nEND:VALARM\nEND:VEVENT\n");
    // Acknowledged at its very moment: it does not go off again.
    EXPECT_THAT(firings(before), ElementsAre("2026-03-12T10:00 at 2026-03-12T10:30"));
    const std::string after =
        acknowledged(before, "c~s~20260312T100000Z~z", "2026-03-12T10:31:00Z");
    EXPECT_THAT(firings(after), ElementsAre());
    EXPECT_THAT(after, HasSubstr("ACKNOWLEDGED:20260312T103100Z"));
    EXPECT_THAT(after, Not(HasSubstr("UID:z")));
}

TEST(SnoozingAnAlarm, WithoutAUidGivesItOne) {
    const std::string before =
        "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:s\r\nDTSTART;VALUE=DATE:20260310\r\n"
        "RRULE:FREQ=DAILY\r\nBEGIN:VALARM\r\nACTION:AUDIO\r\nATTACH;VALUE=URI:Basso\r\n"
        "TRIGGER:PT9H\r\nREPEAT:1\r\nDURATION:PT5M\r\nEND:VALARM\r\nEND:VEVENT\r\n"
        "END:VCALENDAR\r\n";
    const auto window = windowFrom("2026-03-10T00:00:00Z", 1);
    const auto uids = reminderUidsIn(before, window);
    ASSERT_EQ(uids.size(), 2U);
    const std::string after =
        snoozed(before, uids[0], "2026-03-10T20:00:00Z", "2026-03-10T08:20:00Z");
    EXPECT_THAT(after, HasSubstr("\r\nRECURRENCE-ID;VALUE=DATE:20260310\r\n"));
    EXPECT_THAT(after, HasSubstr("\r\nUID:new-1\r\n"));
    EXPECT_THAT(after, HasSubstr("\r\nRELATED-TO;RELTYPE=SNOOZE:new-1\r\n"));
    EXPECT_THAT(firingsIn(after, window), ElementsAre("2026-03-10T12:00 at 2026-03-10T20:00"));
    EXPECT_EQ(after.find('\n'), after.find("\r\n") + 1);
}

TEST(SnoozingAnAlarm, ToATimeBeforeItsOwnLeavesNothingWhenThatIsDismissed) {
    const std::string text = fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260312T090000Z\n"
                                        "BEGIN:VALARM\nUID:a\nACTION:DISPLAY\nTRIGGER:-PT10M\n"
                                        "END:VALARM\nEND:VEVENT\n");
    const std::string early =
        snoozed(text, ofTwelfth, "2026-03-12T07:00:00Z", "2026-03-12T06:00:00Z");
    EXPECT_THAT(firings(early), ElementsAre("2026-03-12T09:00 at 2026-03-12T07:00"));
    const std::string after =
        acknowledged(early, "c~e~20260312T090000Z~new-1", "2026-03-12T07:00:05Z");
    EXPECT_THAT(firings(after), ElementsAre());
}

TEST(SnoozingAnAlarm, OfAnItemOutsideOfACalendarHappensThere) {
    const std::string whole = weekly("");
    const std::string alone = whole.substr(
        whole.find("BEGIN:VEVENT"), whole.find("END:VCALENDAR") - whole.find("BEGIN:VEVENT"));
    const std::string after =
        snoozed(alone, ofTwelfth, "2026-03-12T09:30:00Z", "2026-03-12T08:51:07Z");
    EXPECT_THAT(after, testing::StartsWith(alone));
    EXPECT_THAT(firings(after), testing::Contains("2026-03-12T09:00 at 2026-03-12T09:30"));
}

TEST(SnoozingAnAlarm, AtAFixedTimeStaysWithTheSeriesAndIsNotCopied) {
    const std::string fixed = "END:VALARM\nBEGIN:VALARM\nUID:f\nACTION:DISPLAY\n"
                              "TRIGGER;VALUE=DATE-TIME:20260312T060000Z\n";
    const std::string before = weekly(fixed);
    const std::string after =
        snoozed(before, ofTwelfth, "2026-03-12T09:30:00Z", "2026-03-12T08:51:00Z");
    EXPECT_EQ(firings(before).size(), 5U);
    EXPECT_EQ(firings(after).size(), 5U);
    const std::string quiet =
        acknowledged(before, "c~e~20260312T090000Z~f", "2026-03-12T06:01:00Z");
    EXPECT_THAT(quiet, Not(HasSubstr("RECURRENCE-ID")));
    EXPECT_EQ(firings(quiet).size(), 4U);
}

TEST(AnAlarmThatIsGone, ChangesNothingAndSaysSo) {
    const AlarmTarget target = alarmTarget(weekly(), ofTwelfth);
    const EditContext context = editContext("2026-03-12T09:00:00Z");
    const std::pair<std::string, const char*> rows[] = {
        {fileAround(""), "the item is not there any more"},
        {weekly("", "EXDATE;TZID=Europe/Berlin:20260312T100000\n"),
         "the occurrence is not there any more"},
        {fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260312T090000Z\nEND:VEVENT\n"),
         "the alarm is not there any more"},
        {weekly() + "BEGIN:VCALENDAR\n", "line 19: VCALENDAR does not end"}};
    for (const auto& [text, error] : rows) {
        EXPECT_EQ(acknowledgeAlarm(text, target, context).error, error);
        EXPECT_EQ(snoozeAlarm(text, target, context.now, context).error, error);
    }
}

TEST(AnOverride, HasItsTimesInTheFormOfTheSeries) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"DTSTART:20260305T090000Z\nDURATION:PT1H\n", "c~e~20260312T090000Z~a",
         "RECURRENCE-ID:20260312T090000Z\n"},
        {"DTSTART:20260305T090000\nDTEND:20260305T093000\n", "c~e~20260312T090000~a",
         "DTEND:20260312T093000\n"},
        {"DTSTART;VALUE=DATE:20260305\nDTEND;VALUE=DATE:20260307\n", "c~e~20260312~a",
         "DTEND;VALUE=DATE:20260314\n"},
        {"DTSTART;TZID=America/New_York:20260305T090000\n"
         "DTEND;TZID=Europe/Berlin:20260305T160000\n",
         "c~e~20260312T130000Z~a", // after New York's change to summer time
         "DTEND;TZID=Europe/Berlin:20260312T150000\n"},
        {"DTSTART:20260305T090000Z\nRDATE;VALUE=PERIOD:20260310T120000Z/PT3H\nDURATION:PT1H\n",
         "c~e~20260310T120000Z~a", "DTEND:20260310T150000Z\n"}};
    for (const auto& [times, uid, line] : rows) {
        const std::string before = fileAround(
            std::string("BEGIN:VEVENT\nUID:e\n") + times +
            "RRULE:FREQ=WEEKLY\nBEGIN:VALARM\nUID:a\nACTION:DISPLAY\nTRIGGER:-PT1M\nEND:VALARM\n"
            "END:VEVENT\n");
        const std::string after =
            snoozed(before, uid, "2026-03-13T00:30:00Z", "2026-03-12T20:00:00Z");
        EXPECT_THAT(after, HasSubstr(line));
        EXPECT_EQ(firings(after).size(), firings(before).size()) << times;
        EXPECT_THAT(firings(after), Contains(HasSubstr("at 2026-03-13T00:30")));
    }
}

} // namespace plenzo
