#include "calendar_fixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {

namespace {

std::string alarm(const std::string& lines) {
    return "BEGIN:VALARM\n" + lines + "END:VALARM\n";
}

std::string event(const std::string& lines) {
    return "BEGIN:VEVENT\nUID:e\n" + lines + "END:VEVENT\n";
}

/// "TYPE abs TIME" or "TYPE rel SECONDS" of every reminder of the record.
std::vector<std::string> remindersOf(const Value& record) {
    std::vector<std::string> lines;
    const Array* reminders = record.dictionary()->arrayForKey("rem");
    for (std::size_t index = 0; reminders != nullptr && index < reminders->size(); ++index) {
        const Dictionary& entry = *(*reminders)[index].dictionary();
        const std::string when = entry.contains("abs")
                                     ? " abs " + dateText(entry, "abs")
                                     : " rel " + std::to_string(entry.integerForKey("rel"));
        lines.push_back(std::to_string(entry.integerForKey("type")) + when);
    }
    return lines;
}

std::vector<std::string> remindersOfOnly(const std::string& components) {
    const Array records = recordsOf(components, windowFrom("2026-03-10T12:00:00Z"));
    EXPECT_EQ(records.size(), 1U);
    return records.empty() ? std::vector<std::string>() : remindersOf(records[0]);
}

std::string localText(const cctz::civil_second& local) {
    const cctz::time_zone utc = cctz::utc_time_zone();
    return cctz::format("%Y%m%dT%H%M%S", cctz::convert(local, utc), utc);
}

Dictionary onlyReminder(const std::string& alarmLines) {
    const Array records = recordsOf(event("DTSTART:20260312T100000Z\n" + alarm(alarmLines)),
                                    windowFrom("2026-03-10T12:00:00Z"));
    return *(*records[0].dictionary()->arrayForKey("rem"))[0].dictionary();
}

} // namespace

TEST(AnAlarm, HasTheTypeOfItsAction) {
    const std::pair<const char*, int> rows[] = {{"DISPLAY", 0},   {"AUDIO", 1}, {"EMAIL", 2},
                                                {"PROCEDURE", 0}, {"NONE", 3},  {"X-DANCE", 3}};
    for (const auto& [action, type] : rows) {
        const Dictionary entry =
            onlyReminder(std::string("ACTION:") + action + "\nTRIGGER:-PT5M\n");
        EXPECT_EQ(entry.integerForKey("type"), type) << action;
        EXPECT_EQ(entry.doubleForKey("rel"), -300.0) << action;
    }
}

TEST(AnAlarm, CarriesItsSoundItsRecipientsAndItsAcknowledgement) {
    const std::pair<const char*, const char*> sounds[] = {
        {"ATTACH;VALUE=URI:Basso", "Basso"},
        {"ATTACH;FMTTYPE=audio/x-wav:file:///usr/share/sounds/Low%20bell.wav", "Low%20bell"},
        {"ATTACH:ftp://example.org/pub/bell-01.aud", "bell-01"}};
    for (const auto& [line, name] : sounds) {
        EXPECT_EQ(onlyReminder(std::string("ACTION:AUDIO\nTRIGGER:PT0S\n") + line + "\n")
                      .stringForKey("url"),
                  name);
    }
    const Dictionary mail =
        onlyReminder("ACTION:EMAIL\nTRIGGER:-P1D\nATTENDEE:mailto:a@example.org\n"
                     "ATTENDEE:MAILTO:b@example.org\nATTENDEE:tel:112\n");
    EXPECT_EQ(*mail.arrayForKey("to"), (Array{"a@example.org", "b@example.org"}));
    const Dictionary known = onlyReminder(
        "UID:bell@home\nACTION:DISPLAY\nTRIGGER:-PT5M\nACKNOWLEDGED:20260312T095501Z\n");
    EXPECT_EQ(dateText(known, "ack"), "2026-03-12T09:55");
    EXPECT_EQ(known.stringForKey("uid"), "c~e~20260312T100000Z~bell_40home");
}

TEST(AnAlarm, CountsFromTheEndItNames) {
    const std::string alarms = alarm("ACTION:DISPLAY\nTRIGGER:-PT10M\n") +
                               alarm("ACTION:DISPLAY\nTRIGGER;RELATED=END:PT10M\n") +
                               alarm("ACTION:DISPLAY\nTRIGGER;VALUE=DATE-TIME:20260311T080000Z\n");
    EXPECT_THAT(remindersOfOnly(event("DTSTART:20260312T100000Z\nDURATION:PT2H\n" + alarms)),
                ElementsAre("0 rel -600", "0 rel 7800", "0 abs 2026-03-11T08:00"));
    // A to-do is placed by its due time; its start lies five hours before.
    const std::string toDo = "BEGIN:VTODO\nUID:t\nDTSTART:20260312T050000Z\nDUE:20260312T100000Z\n";
    EXPECT_THAT(remindersOfOnly(toDo + alarms + "END:VTODO\n"),
                ElementsAre("0 rel -18600", "0 rel 600", "0 abs 2026-03-11T08:00"));
    // Without a start the due time is what there is to count from; without both there is nothing.
    EXPECT_THAT(
        remindersOfOnly("BEGIN:VTODO\nUID:t\nDUE:20260312T100000Z\n" + alarms + "END:VTODO\n"),
        ElementsAre("0 rel -600", "0 rel 600", "0 abs 2026-03-11T08:00"));
    EXPECT_THAT(remindersOfOnly("BEGIN:VTODO\nUID:t\n" + alarms + "END:VTODO\n"),
                ElementsAre("0 abs 2026-03-11T08:00"));
}

TEST(AnAlarm, ADayAheadKeepsTheWallClockThroughDaylightSaving) {
    const std::string day =
        alarm("ACTION:DISPLAY\nTRIGGER:-P1D\n") + alarm("ACTION:DISPLAY\nTRIGGER:-PT24H\n");
    EXPECT_THAT(remindersOfOnly(event("DTSTART;TZID=Europe/Berlin:20260329T090000\n" + day)),
                ElementsAre("0 rel -82800", "0 rel -86400"));
    EXPECT_THAT(remindersOfOnly(event("DTSTART;VALUE=DATE:20260330\n" + day)),
                ElementsAre("0 rel -82800", "0 rel -86400"));
}

TEST(AnAlarm, ThatRepeatsGivesAnEntryForEachTime) {
    EXPECT_THAT(
        remindersOfOnly(event("DTSTART:20260312T100000Z\n" +
                              alarm("ACTION:DISPLAY\nTRIGGER:-PT10M\nREPEAT:2\nDURATION:PT5M\n") +
                              alarm("ACTION:DISPLAY\nTRIGGER:-PT1M\nREPEAT:2\n"))),
        ElementsAre("0 rel -600", "0 rel -300", "0 rel 0", "0 rel -60"));
    EXPECT_EQ(remindersOfOnly(event("DTSTART:20260312T100000Z\n" +
                                    alarm("ACTION:DISPLAY\nTRIGGER:PT0S\nREPEAT:2000000000\n"
                                          "DURATION:PT1S\n")))
                  .size(),
              31U);
}

TEST(AnOccurrenceBeyondTheWindow, IsThereForAnAlarmInside) {
    const auto shown = [](const std::string& trigger) {
        return linesOf(recordsOf(event("SUMMARY:E\nDTSTART:20260420T100000Z\nRRULE:FREQ=YEARLY\n" +
                                       alarm("ACTION:DISPLAY\nTRIGGER:" + trigger + "\n")),
                                 windowFrom("2026-03-10T12:00:00Z", 14)));
    };
    EXPECT_THAT(shown("-P4W"), ElementsAre("2026-04-20T10:00 2026-04-20T10:00 E"));
    EXPECT_THAT(shown("-P1W"), IsEmpty());
    EXPECT_THAT(shown("P48W"), ElementsAre()); // of last year's: that one is before the series
}

TEST(AnOccurrenceBeforeTheWindow, IsThereForAnAlarmInside) {
    EXPECT_THAT(
        linesOf(recordsOf(event("SUMMARY:E\nDTSTART:20260201T100000Z\nRRULE:FREQ=MONTHLY\n" +
                                alarm("ACTION:DISPLAY\nTRIGGER:P10D\n")),
                          windowFrom("2026-03-10T12:00:00Z", 14))),
        ElementsAre("2026-03-01T10:00 2026-03-01T10:00 E"));
}

TEST(ASingleEvent, IsThereWheneverASeriesOfOneWouldBe) {
    const char* lengths[] = {"", "DURATION:P40DT3H\n", "DURATION:PT1H\n"};
    const char* triggers[] = {"-P300D", "-PT23H", "PT0S", "RELATED=END:P45D", "P300D"};
    int countThere = 0;
    for (const char* length : lengths) {
        for (const std::string trigger : triggers) {
            const std::string separator = trigger.starts_with("R") ? ";" : ":";
            const std::string rest =
                length + alarm("ACTION:DISPLAY\nTRIGGER" + separator + trigger + "\n");
            for (int hours = -9000; hours < 9000; hours += 53) {
                const std::string start = "SUMMARY:E\nDTSTART;TZID=Pacific/Kiritimati:" +
                                          localText(cctz::civil_second(2026, 3, 10, hours)) + "\n";
                const auto window = windowFrom("2026-03-10T12:00:00Z", 14);
                const auto single = linesOf(recordsOf(event(start + rest), window));
                EXPECT_EQ(single, linesOf(recordsOf(
                                      event(start + "RRULE:FREQ=DAILY;COUNT=1\n" + rest), window)))
                    << start << rest;
                countThere += single.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(countThere, 100);
}

TEST(AnEventOfSeveralDays, HasItsAlarmsOnTheFirst) {
    const Array records =
        recordsOf(event("DTSTART;VALUE=DATE:20260312\nDTEND;VALUE=DATE:20260314\n" +
                        alarm("ACTION:DISPLAY\nTRIGGER:-PT1H\n")),
                  windowFrom("2026-03-10T12:00:00Z"));
    ASSERT_EQ(records.size(), 2U);
    EXPECT_THAT(remindersOf(records[0]), ElementsAre("0 rel -3600"));
    EXPECT_THAT(remindersOf(records[1]), IsEmpty());
}

TEST(AnAbsoluteAlarmOfASeries, GoesOffOnce) {
    const Array records =
        recordsOf(event("DTSTART:20260301T100000Z\nRRULE:FREQ=DAILY;COUNT=30\n" +
                        alarm("ACTION:DISPLAY\nTRIGGER;VALUE=DATE-TIME:20260315T080000Z\n")),
                  windowFrom("2026-03-10T12:00:00Z"));
    std::vector<std::string> with;
    for (const Value& record : records) {
        if (!remindersOf(record).empty()) {
            with.push_back(dateText(*record.dictionary(), "date"));
        }
    }
    EXPECT_THAT(with, ElementsAre("2026-03-15T10:00"));
}

TEST(ACompletedToDo, HasNoAlarms) {
    EXPECT_THAT(remindersOfOnly("BEGIN:VTODO\nUID:t\nDUE:20260312T100000Z\nSTATUS:COMPLETED\n" +
                                alarm("ACTION:DISPLAY\nTRIGGER:PT0S\n") + "END:VTODO\n"),
                IsEmpty());
}

} // namespace plenzo
