#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/edits/component_text.h"
#include "host/ical/recurrence_rule.h"
#include "host/ical/zone_table.h"
#include "host/quick/quick_entry.h"
#include "quick/quick_entry_table.h"

#include <gmock/gmock.h>

#include <iterator>
#include <random>
#include <sstream>

namespace plenzo {

namespace {

QuickEntryContext somePresent() {
    return {instant("2026-11-23T10:00:00+01:00"),
            CalendarZone(systemZoneNamed("Europe/Berlin").value()), DayMonthOrder::DayFirst};
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int each = 0; each < times; ++each) {
        result += text;
    }
    return result;
}

} // namespace

TEST(AQuickEntry, IsReadAsTheTableSays) {
    const std::vector<QuickEntryRow> rows = quickEntryTable();
    ASSERT_GT(rows.size(), 100U);
    for (const QuickEntryRow& row : rows) {
        EXPECT_EQ(lineOf(readQuickEntry(row.text, row.context)), row.expected)
            << "quick_entries.txt:" << row.line << ": " << row.text;
    }
}

TEST(AQuickEntry, ComesBackFromItsComponentAsItWas) {
    for (const QuickEntryRow& row : quickEntryTable()) {
        const QuickEntry entry = readQuickEntry(row.text, row.context);
        const CalendarText read = readCalendarText(
            fileAround(componentText(entry, {"new-1", row.context.now, row.zoneName})));
        ASSERT_THAT(read.problems, testing::IsEmpty()) << row.text;
        ASSERT_EQ(read.items.size(), 1U) << row.text;
        const CalendarItem& item = read.items[0];
        const bool isPoint = entry.start && timeText(entry.start) == timeText(entry.end);
        const QuickEntry returned{item.kind,
                                  item.title,
                                  item.location,
                                  item.start,
                                  isPoint ? item.start : item.end,
                                  item.recurrence.rules.empty() ? "" : entry.recurrenceRule};
        EXPECT_EQ(lineOf(returned), lineOf(entry)) << row.text;
        EXPECT_EQ(item.uid, "new-1");
        EXPECT_EQ(item.recurrence.isRecurring(), !entry.recurrenceRule.empty()) << row.text;
        if (item.start && item.start->form == TimeForm::Zoned) {
            EXPECT_EQ(instantOf(*item.start, {}), instantOf(*entry.start, {})) << row.text;
        }
    }
}

TEST(AQuickEntry, RepeatsOnItsFirstDayAndByARuleThatIsOne) {
    for (const QuickEntryRow& row : quickEntryTable()) {
        const QuickEntry entry = readQuickEntry(row.text, row.context);
        if (entry.recurrenceRule.empty()) {
            continue;
        }
        const auto rule = RecurrenceRule::fromText(entry.recurrenceRule);
        ASSERT_TRUE(rule) << row.text;
        ExpansionBudget budget{1000, 2};
        const auto times = rule->localTimes(
            *entry.start, {entry.start->local, entry.start->local + 40 * 86400}, {}, budget);
        ASSERT_FALSE(times.empty()) << row.text;
        EXPECT_EQ(times.front(), entry.start->local) << row.text;
    }
}

TEST(AQuickEntry, HasATitleWhateverIsTyped) {
    const std::string texts[] = {"today",      "todo",          "todo:",     "@home",
                                 "-",          "...",           "every day", "at 5",
                                 "\xFF\xFE",   "\u202E\u0000x", "@",         "@@",
                                 "(",          "every",         "in",        "for",
                                 "24:00",      "-10",           "10-",       "every every every",
                                 "9999-12-31", "\u2013"};
    for (const std::string& text : texts) {
        EXPECT_FALSE(readQuickEntry(text, somePresent()).title.empty()) << text;
    }
    EXPECT_EQ(readQuickEntry("", somePresent()).title, "");
    EXPECT_EQ(readQuickEntry(" \t\n ", somePresent()).title, "");
}

TEST(AQuickEntry, OfAnyOfItsWordsEndsAfterItsStartAndRepeatsByARule) {
    std::vector<std::string> words = {"-", "0", "24:00", "99", "31", "2/29", "9999-12-31", "1900"};
    for (const QuickEntryRow& row : quickEntryTable()) {
        std::istringstream texts(row.text);
        words.insert(words.end(), std::istream_iterator<std::string>(texts), {});
    }
    std::mt19937 random(20261123); // the same texts in every run
    for (int each = 0; each < 20'000; ++each) {
        std::string text;
        for (std::size_t count = 1 + random() % 8; count > 0; --count) {
            text += words[random() % words.size()] + " ";
        }
        const QuickEntry entry = readQuickEntry(text, somePresent());
        EXPECT_FALSE(entry.title.empty()) << text;
        EXPECT_TRUE(entry.kind == ItemKind::ToDo || (entry.start && entry.end)) << text;
        if (entry.start) {
            ASSERT_TRUE(entry.end) << text;
            EXPECT_EQ(entry.start->form, entry.end->form) << text;
            EXPECT_LE(instantOf(*entry.start, {}), instantOf(*entry.end, {})) << text;
        }
        EXPECT_TRUE(entry.recurrenceRule.empty() || RecurrenceRule::fromText(entry.recurrenceRule))
            << text << entry.recurrenceRule;
    }
}

TEST(AQuickEntry, IsReadHoweverLongItIs) {
    constexpr int many = 30'000;
    const std::string words[] = {
        "every ", "daily ",  "at 5 ", "@ ", "@A ",   "in Room ",  "monday ", "10-",
        "9:",     "for 2 ",  "a",     "- ", "next ", "tomorrow ", "\u00e4",  "every mon and ",
        "until ", "5 May - "};
    for (const std::string& word : words) {
        const std::string text = repeated(word, many);
        const QuickEntry entry = readQuickEntry(text, somePresent());
        EXPECT_FALSE(entry.title.empty()) << word;
        EXPECT_LE(entry.title.size(), text.size()) << word;
    }
}

TEST(AComponentText, EscapesAndFoldsBetweenCharacters) {
    QuickEntry entry;
    entry.title = "a;b,c\\d\ne\x01\x7F \xFF" + repeated("\u00fc\U0001F600", 40);
    entry.location = "BEGIN:VEVENT\r\nEND:VEVENT";
    entry.start = CalendarTime{TimeForm::Date, cctz::civil_second(2026, 3, 1), {}};
    const std::string text =
        componentText(entry, {"u", instant("2026-03-01T09:00:00+01:00"), "Europe/Berlin"});
    EXPECT_THAT(text,
                testing::StartsWith("BEGIN:VEVENT\r\nUID:u\r\nDTSTAMP:20260301T080000Z\r\n"
                                    "DTSTART;VALUE=DATE:20260301\r\nSUMMARY:a\\;b\\,c\\\\d\\ne "));
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 76U); // with the CR
        EXPECT_NE(static_cast<unsigned char>(line[1]) & 0xC0U, 0x80U) << "cut inside a character";
    }
    const CalendarText read = readCalendarText(fileAround(text));
    ASSERT_EQ(read.items.size(), 1U);
    EXPECT_EQ(read.items[0].title, "a;b,c\\d\ne \uFFFD" + repeated("\u00fc\U0001F600", 40));
    EXPECT_EQ(read.items[0].location, "BEGIN:VEVENT\nEND:VEVENT");
}

TEST(AComponentText, HasTheAlarmWhereThereIsATimeForIt) {
    const QuickEntryContext context{instant("2026-03-12T09:00:00Z"), CalendarZone()};
    const std::pair<const char*, const char*> rows[] = {
        {"Tea tomorrow at 17:00", "2026-03-13T16:50"},
        {"todo call Ana tomorrow at 17:00", "2026-03-13T16:50"},
        {"Holiday tomorrow", ""},
        {"todo someday", ""}};
    for (const auto& [text, expected] : rows) {
        const std::string component =
            componentText(readQuickEntry(text, context), {"u", context.now, "UTC", 600});
        const auto firings = firingsIn(fileAround(component), windowFrom("2026-03-12T09:00:00Z"));
        const std::string at = firings.empty() ? "" : firings[0].substr(firings[0].find("at ") + 3);
        EXPECT_EQ(at, expected) << text;
    }
}

TEST(AComponentText, WithoutAZoneNameIsInUniversalTimeUnlessItRecurs) {
    const SystemSeconds created = instant("2026-03-01T09:00:00Z");
    const auto textOf = [&](const char* typed) {
        return componentText(readQuickEntry(typed, somePresent()), {"u", created, ""});
    };
    EXPECT_THAT(textOf("Lunch tomorrow 12:30"), testing::HasSubstr("DTSTART:20261124T113000Z\r\n"));
    EXPECT_THAT(textOf("Lunch daily 12:30"), testing::HasSubstr("DTSTART:20261123T123000\r\n"));
}

} // namespace plenzo
