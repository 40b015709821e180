#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/edits/content_lines.h"
#include "host/store/calendar_records.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace plenzo {

namespace {

CalendarRecords expand(const std::string& text) {
    return calendarRecords(calendarOfText(text), windowFrom("2026-03-10T12:00:00Z", 40));
}

CalendarRecords expandRule(const std::string& start, const std::string& rule) {
    return expand(
        fileAround("BEGIN:VEVENT\nUID:e\nDTSTART" + start + "\nRRULE:" + rule + "\nEND:VEVENT\n"));
}

std::string fileText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> sampleTexts() {
    std::vector<std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(PLENZO_TEST_DATA "/calendars")) {
        texts.push_back(fileText(entry.path()));
    }
    return texts;
}

constexpr const char* fragments[] = {"BEGIN:VEVENT\n",
                                     "END:VEVENT\n",
                                     "BEGIN:VALARM\n",
                                     "END:VALARM\n",
                                     "BEGIN:VCALENDAR\n",
                                     "\n ",
                                     "99999999999",
                                     "-1",
                                     "\0",
                                     "\xff\xfe",
                                     ";VALUE=DATE",
                                     ";VALUE=PERIOD",
                                     ";TZID=",
                                     ":",
                                     "FREQ=SECONDLY;",
                                     "COUNT=999999;",
                                     "INTERVAL=1;",
                                     "BYSETPOS=-1;",
                                     "P9999W",
                                     "T235960Z",
                                     "00000000",
                                     "\"",
                                     ",",
                                     "\\",
                                     "RANGE=THISANDFUTURE"};

/// Cuts, repeats, overwrites and inserts in a few places.
std::string mutated(std::string text, std::mt19937& random) {
    const auto below = [&](std::size_t limit) {
        return random() % std::max<std::size_t>(limit, 1);
    };
    const std::size_t changes = 1 + below(6);
    for (std::size_t change = 0; change < changes && !text.empty(); ++change) {
        const std::size_t at = below(text.size());
        switch (below(4)) {
        case 0:
            text.erase(at, below(60));
            break;
        case 1:
            text[at] = static_cast<char>(below(256));
            break;
        case 2:
            text.insert(at, text.substr(below(text.size()), below(200)));
            break;
        default:
            text.insert(at, fragments[below(std::size(fragments))]);
            break;
        }
    }
    return text;
}

} // namespace

// Each would take from minutes to for ever where nothing bounds it; the test's time limit is the
// check beside the number of records.
TEST(AHostileRule, EndsWithABoundedNumberOfRecords) {
    const std::pair<const char*, const char*> rows[] = {
        {":19000101T000000Z", "FREQ=SECONDLY"},
        {":00010101T000000Z", "FREQ=SECONDLY;COUNT=1000000000"},
        {":19700101T000000Z", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"},
        {":19700101T000000Z", "FREQ=MINUTELY;BYHOUR=3;COUNT=1000000000"},
        {":19700101T000000Z", "FREQ=DAILY;BYMONTHDAY=31;BYMONTH=2;COUNT=5"},
        {":20200101T000000Z", "FREQ=YEARLY;BYMONTHDAY=30;BYMONTH=2"},
        {":20200101T000000Z", "FREQ=MONTHLY;BYDAY=1MO;BYSETPOS=5"},
        {":20200101T000000Z", "FREQ=YEARLY;INTERVAL=32767;BYYEARDAY=366"},
        {":20200101T000000Z", "FREQ=DAILY;INTERVAL=0"},
        {":20200101T000000Z", "FREQ=DAILY;INTERVAL=-5;COUNT=-2"},
        {":20200101T000000Z", "FREQ=WEEKLY;BYSETPOS=366,-366;BYDAY=MO"},
        {";VALUE=DATE:20200101", "FREQ=HOURLY;BYMINUTE=0,1,2,3,4,5,6,7,8,9"},
        {":99991231T235959Z", "FREQ=YEARLY"},
        {":20260310T000000Z", "FREQ=DAILY;UNTIL=99991231"},
        {":20260310T000000Z", "RSCALE=CHINESE;FREQ=YEARLY;SKIP=FORWARD"},
    };
    for (const auto& [start, rule] : rows) {
        EXPECT_LE(expandRule(start, rule).records.size(), 10'000U) << start << ' ' << rule;
    }
}

TEST(AHostileRule, LeavesTheOtherSeriesWhatTheyNeed) {
    std::string components;
    for (int number = 0; number < 60; ++number) {
        components += "BEGIN:VEVENT\nUID:a" + std::to_string(number) +
                      "\nDTSTART:20000101T000000Z\nRRULE:FREQ=SECONDLY\nEND:VEVENT\n";
    }
    components += "BEGIN:VEVENT\nUID:z\nSUMMARY:Good\nDTSTART:19950313T090000Z\n"
                  "RRULE:FREQ=WEEKLY\nEND:VEVENT\n";
    const CalendarRecords result = expand(fileAround(components));
    std::size_t good = 0;
    for (const Value& record : result.records) {
        good += record.dictionary()->stringForKey("title") == "Good" ? 1U : 0U;
    }
    EXPECT_EQ(good, 5U);
    EXPECT_LE(result.records.size(), 60'000U);
    EXPECT_EQ(result.problems.size(), 60U);
    EXPECT_THAT(result.problems.front(), testing::HasSubstr("line 3"));
}

TEST(AHostileZone, EndsToo) {
    std::string zone = "BEGIN:VTIMEZONE\nTZID:Own\n";
    for (const char* rule :
         {"FREQ=SECONDLY", "FREQ=DAILY", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30"}) {
        zone += std::string("BEGIN:STANDARD\nDTSTART:00010101T000000\nTZOFFSETFROM:+9959\n"
                            "TZOFFSETTO:-9959\nRRULE:") +
                rule + "\nEND:STANDARD\n";
    }
    const CalendarRecords result = expand(
        fileAround(zone + "END:VTIMEZONE\nBEGIN:VEVENT\nUID:e\n"
                          "DTSTART;TZID=Own:20260310T120000\nRRULE:FREQ=DAILY\nEND:VEVENT\n"));
    EXPECT_GE(result.records.size(), 30U);
}

TEST(ADeepNest, IsRefusedWithoutRecursion) {
    std::string text = "BEGIN:VCALENDAR\nBEGIN:VEVENT\n";
    for (int depth = 0; depth < 200'000; ++depth) {
        text += "BEGIN:X\n";
    }
    const CalendarText read = readCalendarText(text);
    EXPECT_TRUE(read.items.empty());
    ASSERT_EQ(read.problems.size(), 1U);
    EXPECT_THAT(read.problems[0].text, testing::HasSubstr("nested too deeply"));
}

TEST(AHugeValue, IsReadInProportion) {
    const std::string megabytes(8'000'000, 'x');
    const CalendarText text =
        readCalendarText(fileAround("BEGIN:VEVENT\nUID:" + megabytes + "\nSUMMARY:" + megabytes +
                                    "\nDTSTART:20260310T100000Z\nEND:VEVENT\n"));
    ASSERT_EQ(text.items.size(), 1U);
    EXPECT_EQ(text.items[0].title.size(), megabytes.size());
}

TEST(AMutatedCalendar, NeverBreaksTheReader) {
    const std::vector<std::string> texts = sampleTexts();
    ASSERT_GE(texts.size(), 4U);
    std::mt19937 random(20260310);
    std::size_t records = 0;
    for (int round = 0; round < 400; ++round) {
        records += expand(mutated(texts[random() % texts.size()], random)).records.size();
    }
    EXPECT_GT(records, 400U * 20U); // most of every calendar is still there
}

TEST(AMutatedCalendar, IsEditedWholeOrNotAtAll) {
    const std::vector<std::string> texts = {
        fileText(PLENZO_TEST_DATA "/../../samples/work.ics"),
        fileText(PLENZO_TEST_DATA "/../../samples/home-todos.ics")};
    const EditContext context = editContext("2026-03-10T12:00:00Z");
    const auto window = windowFrom("2026-03-10T12:00:00Z", 3);
    std::mt19937 random(20260311);
    int done = 0;
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        const std::string text = mutated(texts[random() % texts.size()], random);
        std::vector<std::string> uids = reminderUidsIn(text, window);
        uids.resize(std::min<std::size_t>(uids.size(), 2));
        for (const std::string& uid : uids) {
            const AlarmTarget target = alarmTarget(text, uid);
            for (const EditResult& result :
                 {acknowledgeAlarm(text, target, context),
                  snoozeAlarm(text, target, context.now + cctz::seconds(60), context),
                  completeToDo(text, target.occurrence, Completion::Done, context)}) {
                std::string whyNot;
                EXPECT_NE(result.text.empty(), result.error.empty());
                EXPECT_TRUE(ContentText::fromText(result.text, whyNot)) << whyNot;
                ++(result.error.empty() ? done : refused);
            }
        }
    }
    EXPECT_GT(done, 50);
    EXPECT_GT(refused, 50);
}

TEST(AMutatedCalendar, IsChangedForItsReaderWhereverItCanBeRead) {
    const std::string sample = fileText(PLENZO_TEST_DATA "/../../samples/work.ics");
    EditContext context = editContext("2026-03-10T12:00:00Z");
    context.toleratesDamage = true;
    const auto window = windowFrom("2026-03-10T12:00:00Z", 3);
    std::mt19937 random(20260312);
    int edits = 0;
    for (int round = 0; round < 200; ++round) {
        const std::string text = mutated(sample, random);
        EXPECT_EQ(ContentText::fromDamagedText(text).text(), text);
        const std::vector<std::string> uids = reminderUidsIn(text, window);
        for (std::size_t index = 0; index < std::min<std::size_t>(uids.size(), 2); ++index) {
            const EditResult result =
                acknowledgeAlarm(text, alarmTarget(text, uids[index]), context);
            EXPECT_EQ(result.error, "") << text;
            ++edits;
        }
    }
    EXPECT_GT(edits, 200);
}

} // namespace plenzo
