#include "dates/calendar_date.h"
#include "dates/local_dates.h"

namespace plenzo {
namespace {

DateComponents dayOnly(std::int64_t year, std::int64_t month, std::int64_t day) {
    return {.year = year, .month = month, .day = day};
}

TEST(ADateOnlyDate, IsNoonInUniversalWhateverElseIsGiven) {
    const auto date =
        CalendarDate::dateWithYear(2024, 2, 29, 23, 59, 59, true, zoneNamed("Pacific/Kiritimati"));
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ("2024-02-29 12:00:00", textOf(date));
    EXPECT_EQ(TimeZone::universal(), date->timeZone());
    EXPECT_EQ(dayOnly(2024, 2, 29), date->components());
    EXPECT_EQ(date, CalendarDate::dateWithComponents(dayOnly(2024, 2, 29), true));
}

TEST(ADateOnlyDate, IsOneByItsNoonInAUniversalZone) {
    EXPECT_EQ(undefinedComponent, localDate("2024-02-29 12:00:00", "GMT").components().hour);
    EXPECT_EQ(12, localDate("2024-02-29 12:00:00", "Europe/London").components().hour);
    EXPECT_EQ(12, localDate("2024-02-29 12:00:01", "UTC").components().hour);
    EXPECT_EQ(12, localDate("2024-02-29 12:00:00", "UTC").fields().hour);
}

TEST(ADateFromAnInterval, KeepsTheDayThatItsZoneShows) {
    const TimeZone kiritimati = zoneNamed("Pacific/Kiritimati"); // 14 hours ahead
    const double evening = localDate("2024-03-10 20:00:00", "UTC").instant().secondsSince1970();

    const auto timed = CalendarDate::dateWithTimeIntervalSince1970(evening, false, kiritimati);
    EXPECT_EQ(localDate("2024-03-11 10:00:00", kiritimati), timed);
    const auto day = CalendarDate::dateWithTimeIntervalSince1970(evening, true, kiritimati);
    EXPECT_EQ(localDate("2024-03-11 12:00:00", TimeZone::universal()), day);
    EXPECT_EQ("2024-03-10 12:00:00",
              textOf(normalizedDateWithAllDay(Instant::since1970(evening), true)));
    EXPECT_EQ("2024-03-10 20:00:00",
              textOf(normalizedDateWithAllDay(Instant::since1970(evening), false)));
}

TEST(ACalendarDate, IsMadeOfADateAndAZone) {
    const TimeZone tokyo = zoneNamed("Asia/Tokyo");
    EXPECT_EQ(CalendarDate(Instant(5), tokyo),
              CalendarDate::calendarDateWithDate(Instant(5), tokyo));
    EXPECT_EQ(TimeZone::universal(), CalendarDate::calendarDateWithDate(Instant())->timeZone());
    EXPECT_FALSE(CalendarDate::calendarDateWithDate(std::nullopt, tokyo).has_value());
    EXPECT_EQ("2001-01-01 08:59:59", textOf(CalendarDate(Instant(-0.25), tokyo)));
}

TEST(AFloatingTime, KeepsItsWallClock) {
    const CalendarDate floating = localDate("2024-03-10 09:30:00", "Universal");
    const TimeZone newYork = zoneNamed("America/New_York");
    const CalendarDate local = floating.localTimeFromFloatingTime(newYork);

    EXPECT_EQ(localDate("2024-03-10 09:30:00", newYork), local);
    EXPECT_EQ(floating, local.floatingTimeFromLocalTime());
    EXPECT_EQ("2024-03-10 03:30:00",
              textOf(localDate("2024-03-10 02:30:00", "UTC").localTimeFromFloatingTime(newYork)));
}

TEST(AdjustingTheZone, LeavesDateOnlyAndFloatingDatesAlone) {
    const TimeZone tokyo = zoneNamed("Asia/Tokyo");
    CalendarDate date;
    date.adjustComponentsForTimeZone(tokyo, true, false);
    date.adjustComponentsForTimeZone(tokyo, false, true);
    EXPECT_EQ(TimeZone::universal(), date.timeZone());
    date.adjustComponentsForTimeZone(tokyo, false, false);
    EXPECT_EQ(tokyo, date.timeZone());
    EXPECT_EQ(Instant(), date.instant());
}

TEST(ApplyingComponents, ReplacesTheDefinedFieldsAsTheCalendarReadsThem) {
    const TimeZone berlin = zoneNamed("Europe/Berlin");
    const Calendar tokyoCalendar(zoneNamed("Asia/Tokyo"));
    const CalendarDate date = localDate("2024-06-30 20:15:30", berlin); // 03:15:30 of 1 July there
    const DateComponents nine{.hour = 9};

    EXPECT_EQ(localDate("2024-07-01 02:15:30", berlin),
              date.calendarDateByApplyingComps(nine, tokyoCalendar, false));
    EXPECT_EQ(localDate("2024-06-30 09:15:30", berlin),
              date.calendarDateByApplyingComps(nine, tokyoCalendar, true));
    EXPECT_EQ(localDate("2024-06-30 09:15:30", tokyoCalendar.timeZone()),
              date.calendarDateByApplyingComps(nine, tokyoCalendar.timeZone()));
    EXPECT_EQ(localDate("2020-02-29 20:15:30", berlin),
              date.calendarDateByApplyingComps(dayOnly(2020, 2, 29), berlin));
}

TEST(AddingAnInterval, CutsItsFractionOnlyWhereThatIsAsked) {
    const TimeZone berlin = zoneNamed("Europe/Berlin");
    const CalendarDate date(Instant(100.5), berlin);
    EXPECT_EQ(CalendarDate(Instant(102.5), berlin), date.calendarDateByAddingTimeInterval(2.9));
    EXPECT_EQ(CalendarDate(Instant(98.5), berlin), date.calendarDateByAddingTimeInterval(-2.9));
    EXPECT_EQ(CalendarDate(Instant(103.25), berlin), date.dateByAddingTimeInterval(2.75));

    const auto before = CalendarDate::fixDateByAddingTimeInterval();
    EXPECT_EQ(CalendarDate(Instant(102.5), berlin), date.dateByAddingTimeInterval(2.75));
    EXPECT_EQ(IntervalAddition::WholeSeconds, CalendarDate::fixDateByAddingTimeInterval(before));
}

TEST(TheDayOfTheCommonEra, IsThatOfTheOwnZone) {
    EXPECT_EQ(1, localDate("0001-01-01 00:00:00", "UTC").dayOfCommonEra());
    EXPECT_EQ(0, localDate("0000-12-31 23:59:59", "UTC").dayOfCommonEra());
    EXPECT_EQ(730486, localDate("2001-01-01 00:00:00", "Pacific/Apia").dayOfCommonEra());
    EXPECT_EQ(730486, localDate("2001-01-01 23:59:59", "Pacific/Kiritimati").dayOfCommonEra());
}

} // namespace
} // namespace plenzo
