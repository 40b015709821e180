#include "calendar_fixture.h"
#include "host/ical/zone_table.h"

#include <gmock/gmock.h>

namespace plenzo {

namespace {

constexpr const char* definition = R"(BEGIN:VTIMEZONE
TZID:Own
BEGIN:STANDARD
DTSTART:20001029T030000
TZOFFSETFROM:+0200
TZOFFSETTO:+0100
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10
END:STANDARD
BEGIN:DAYLIGHT
DTSTART:20010325T020000
TZOFFSETFROM:+0100
TZOFFSETTO:+0200
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3
END:DAYLIGHT
END:VTIMEZONE
)";

std::optional<CalendarZone> zoneFor(const char* name) {
    static const std::string text = fileAround(definition);
    static const ContentBlocks blocks = contentBlocksOf(text);
    ZoneTable zones(blocks.components);
    return zones.zoneNamed(name);
}

} // namespace

TEST(AZoneTable, KnowsTheNamesThatCalendarsUse) {
    for (const char* name : {"Europe/Berlin", "/example.org/20050126_1/Europe/Berlin",
                             "/Europe/Berlin", "W. Europe Standard Time", "Own"}) {
        const auto zone = zoneFor(name);
        ASSERT_TRUE(zone) << name;
        EXPECT_EQ(zone->instantOf(cctz::civil_second(2026, 7, 1, 12, 0, 0)),
                  instant("2026-07-01T10:00:00Z"))
            << name;
    }
}

TEST(AZoneTable, RefusesWhatIsNoZoneName) {
    for (const char* name : {"", "/", "Nowhere/Atall", "../../etc/passwd", "localtime", "own",
                             "/etc/localtime", "Europe/Berlin\nX"}) {
        EXPECT_FALSE(zoneFor(name)) << name;
    }
}

// The definition says the same as the database, so every local time must give the same instant:
// also the skipped and the repeated hours, and the last second before and the first after them.
TEST(AnEmbeddedZone, AgreesWithTheDatabaseThroughEveryChange) {
    const CalendarZone own = zoneFor("Own").value();
    const CalendarZone system = zoneFor("Europe/Berlin").value();
    for (int year = 2001; year <= 2036; ++year) {
        for (const int month : {3, 10}) {
            const cctz::civil_second begin(year, month, 24);
            for (int step = 0; step < 8 * 48; ++step) {
                for (const int seconds : {0, 1, 1799}) {
                    const cctz::civil_second local = begin + step * std::int64_t{1800} + seconds;
                    ASSERT_EQ(own.instantOf(local), system.instantOf(local)) << local;
                    ASSERT_EQ(own.localOf(own.instantOf(local)),
                              system.localOf(system.instantOf(local)))
                        << local;
                }
            }
        }
    }
}

TEST(AnUnknownZone, MakesItsTimesFloatingAndIsNamed) {
    const CalendarText text = readCalendarText(
        fileAround("BEGIN:VEVENT\nDTSTART;TZID=Nowhere/Atall:20260310T100000\nEND:VEVENT\n"));
    ASSERT_EQ(text.items.size(), 1U);
    EXPECT_EQ(text.items[0].start->form, TimeForm::Floating);
    ASSERT_EQ(text.problems.size(), 1U);
    EXPECT_THAT(text.problems[0].text, testing::HasSubstr("\"Nowhere/Atall\""));
}

} // namespace plenzo
