#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/commands/item_summary.h"
#include "host/edits/command_targets.h"
#include "host/ical/zone_table.h"

#include <gmock/gmock.h>
#include <unicode/locid.h>

using testing::HasSubstr;
using testing::Not;

namespace plenzo {

namespace {

class AnItemSummary : public testing::Test {
protected:
    AnItemSummary() { icu::Locale::setDefault(icu::Locale("en", "GB"), m_status); }

    /// Of the occurrence with that identity: "e~20260312T100000Z".
    static ItemSummary of(const std::string& components, const std::string& rest) {
        const CalendarSet set = setOf(fileAround(components));
        const auto target = CommandTargets(set).occurrence("c~" + rest);
        return target ? itemSummary(set.calendars[0], *target,
                                    CalendarZone(systemZoneNamed("Europe/Berlin").value()))
                      : ItemSummary();
    }

    static std::string when(const std::string& times, const std::string& rest) {
        return of("BEGIN:VEVENT\nUID:e\nSUMMARY:t\n" + times + "END:VEVENT\n", rest).when;
    }

private:
    UErrorCode m_status = U_ZERO_ERROR;
};

} // namespace

TEST_F(AnItemSummary, SaysWhenOnTheUsersWallClock) {
    EXPECT_EQ(when("DTSTART:20260312T100000Z\nDURATION:PT90M\n", "e~20260312T100000Z"),
              "Thursday, 12 March 2026 at 11:00 – 12:30");
    EXPECT_EQ(when("DTSTART:20260312T100000Z\n", "e~20260312T100000Z"),
              "Thursday, 12 March 2026 at 11:00");
    EXPECT_EQ(when("DTSTART:20260312T220000Z\nDURATION:PT2H\n", "e~20260312T220000Z"),
              "Thursday, 12 March 2026 at 23:00 – Friday, 13 March 2026 at 01:00");
    EXPECT_EQ(when("DTSTART;VALUE=DATE:20260312\n", "e~20260312"), "Thursday, 12 March 2026");
    EXPECT_EQ(when("DTSTART;VALUE=DATE:20260312\nDTEND;VALUE=DATE:20260315\n", "e~20260312"),
              "Thursday, 12 March 2026 – Saturday, 14 March 2026");
}

TEST_F(AnItemSummary, IsOfTheOccurrenceThatIsAskedFor) {
    const std::string series =
        "BEGIN:VEVENT\nUID:e\nSUMMARY:weekly\nDTSTART:20260312T100000Z\nRRULE:FREQ=WEEKLY\n"
        "END:VEVENT\nBEGIN:VEVENT\nUID:e\nSUMMARY:moved\nRECURRENCE-ID:20260319T100000Z\n"
        "DTSTART:20260320T080000Z\nEND:VEVENT\n";
    const ItemSummary later = of(series, "e~20260326T100000Z");
    EXPECT_EQ(later.title, "weekly");
    EXPECT_THAT(later.when, HasSubstr("26 March 2026 at 11:00"));
    EXPECT_THAT(later.repeats, HasSubstr("week"));
    const ItemSummary moved = of(series, "e~20260319T100000Z");
    EXPECT_EQ(moved.title, "moved");
    EXPECT_THAT(moved.when, HasSubstr("20 March 2026 at 09:00"));
}

TEST_F(AnItemSummary, IsAPageThatRunsNothing) {
    const ItemSummary summary =
        of("BEGIN:VEVENT\nUID:e\nSUMMARY:<script>x()</script>\nDTSTART:20260312T100000Z\n"
           "DESCRIPTION:a & b\nURL:javascript:x()\nLOCATION:\"><img src=x>\nEND:VEVENT\n",
           "e~20260312T100000Z");
    const std::string page = summaryPage(summary);
    for (const char* part : {"<script", "<img", "href=\"javascript"}) {
        EXPECT_THAT(page, Not(HasSubstr(part)));
    }
    EXPECT_THAT(page, HasSubstr("a &amp; b"));
    EXPECT_THAT(summaryText(summary), HasSubstr("a & b"));
}

} // namespace plenzo
