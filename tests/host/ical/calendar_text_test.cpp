#include "calendar_fixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace plenzo {

namespace {

const std::string good = "BEGIN:VEVENT\nUID:good\nDTSTART:20260310T100000Z\nEND:VEVENT\n";

std::vector<std::string> uidsOf(const CalendarText& text) {
    std::vector<std::string> uids;
    for (const CalendarItem& item : text.items) {
        uids.push_back(item.uid);
    }
    return uids;
}

} // namespace

TEST(ADamagedComponent, CostsOnlyItselfAndIsNamedWithItsLine) {
    const std::string damages[] = {
        "BEGIN:VEVENT\nUID:bad\n",                                       // no END
        "BEGIN:VEVENT\nUID:bad\nEND:VTODO\n",                            // another END
        "BEGIN:VEVENT\nUID:bad\nBEGIN:VALARM\nEND:VEVENT\n",             // a part without END
        "BEGIN:VEVENT\nUID:bad\nDTSTART:soon\nEND:VEVENT\n",             // no date
        "BEGIN:VEVENT\nUID:bad\nDTSTART:20260230T100000Z\nEND:VEVENT\n", // no day of the calendar
        "BEGIN:VEVENT\nUID:bad\nDTSTART:20260210T250000Z\nEND:VEVENT\n", // no time of day
        "BEGIN:VEVENT\nUID:bad\nSUMMARY:x\nEND:VEVENT\n",                // no start
        "BEGIN:VEVENT\nUID:bad\nRECURRENCE-ID:x\nDTSTART:20260310\nEND:VEVENT\n",
        std::string("BEGIN:VEVENT\nUID:bad\nSUMMARY:a\0b\nEND:VEVENT\n", 44)};
    for (const std::string& damage : damages) {
        std::string components = good;
        components += damage;
        components += good;
        const CalendarText text = readCalendarText(fileAround(components));
        EXPECT_THAT(uidsOf(text), ElementsAre("good", "good")) << damage;
        ASSERT_FALSE(text.problems.empty()) << damage;
        EXPECT_EQ(text.problems.front().line, 7) << damage;
    }
}

TEST(ADamagedProperty, CostsOnlyItself) {
    const CalendarText text = readCalendarText(
        fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260310T100000Z\nRRULE:FREQ=SOMETIMES\n"
                   "LOCATION:\nPRIORITY:high\nEND:VEVENT\n"));
    ASSERT_EQ(text.items.size(), 1U);
    EXPECT_TRUE(text.items[0].recurrence.rules.empty());
    ASSERT_EQ(text.problems.size(), 1U);
    EXPECT_THAT(text.problems[0].text, HasSubstr("RRULE"));
}

TEST(AFileThatIsNoCalendar, IsSaidToBeNone) {
    for (const char* text : {"", "\xEF\xBB\xBF", "Dear reader,\nnothing here.\n", "{\"a\": 1}"}) {
        const CalendarText read = readCalendarText(text);
        ASSERT_EQ(read.problems.size(), 1U) << text;
        EXPECT_EQ(read.problems[0].text, "holds no calendar");
    }
    EXPECT_TRUE(readCalendarText("BEGIN:VCALENDAR\nEND:VCALENDAR\n").problems.empty());
}

TEST(ACalendar, IsReadInEverySpellingOfItsLines) {
    const std::string plain = fileAround("BEGIN:VEVENT\nUID:good\nSUMMARY:A long title\n"
                                         "DTSTART:20260310T100000Z\nEND:VEVENT\n");
    std::string withReturns;
    for (const char character : plain) {
        withReturns += character == '\n' ? "\r\n" : std::string(1, character);
    }
    std::string folded = plain;
    folded.replace(folded.find("long title"), 10, "lo\n ng ti\n\ttle");
    std::string lower = plain;
    lower.replace(lower.find("BEGIN:VEVENT"), 12, "begin:vevent");
    for (const std::string& text : {plain, withReturns, "\xEF\xBB\xBF" + plain, folded, lower}) {
        const CalendarText read = readCalendarText(text);
        ASSERT_EQ(read.items.size(), 1U) << text;
        EXPECT_EQ(read.items[0].title, "A long title");
        EXPECT_TRUE(read.problems.empty());
    }
}

TEST(ACalendar, NamesAndColoursItself) {
    const struct {
        const char* lines;
        const char* title;
        std::optional<std::uint32_t> color;
    } rows[] = {
        {"NAME:Work\nX-WR-CALNAME:Other\nCOLOR:SteelBlue\n", "Work", 0x4682B4},
        {"X-WR-CALNAME:Home\\, sweet\nX-APPLE-CALENDAR-COLOR:#FF8000CC\n", "Home, sweet", 0xFF8000},
        {"X-APPLE-CALENDAR-COLOR:#00aBcD\n", "", 0x00ABCD},
        {"COLOR:no colour\n", "", std::nullopt},
        {"COLOR:#12345\n", "", std::nullopt},
    };
    for (const auto& row : rows) {
        const CalendarText text = readCalendarText(fileAround(row.lines));
        EXPECT_EQ(text.title, row.title) << row.lines;
        EXPECT_EQ(text.color, row.color) << row.lines;
    }
}

} // namespace plenzo
