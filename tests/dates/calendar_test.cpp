#include "dates/calendar.h"
#include "dates/local_dates.h"

#include <unicode/gregocal.h>

namespace plenzo {
namespace {

Instant at(const std::string& local, const std::string& zone = "UTC") {
    return localDate(local, zone).instant();
}

TEST(ASkippedTime, MovesForwardByTheLengthOfTheGap) {
    const struct {
        const char* zone;
        const char* skipped;
        const char* shown;
    } rows[] = {
        {"Europe/Berlin", "2024-03-31 02:30:00", "2024-03-31 03:30:00"},
        {"America/New_York", "2024-03-10 02:00:00", "2024-03-10 03:00:00"},
        {"Australia/Lord_Howe", "2024-10-06 02:15:00", "2024-10-06 02:45:00"},
        {"Antarctica/Troll", "2024-03-31 02:30:00", "2024-03-31 04:30:00"},
        {"Pacific/Apia", "2011-12-30 10:00:00", "2011-12-31 10:00:00"},
        {"America/Sao_Paulo", "2018-11-04 00:00:00", "2018-11-04 01:00:00"},
        {"Pacific/Kiritimati", "1994-12-31 08:00:00", "1995-01-01 08:00:00"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.shown, textOf(localDate(row.skipped, row.zone))) << row.zone;
    }
}

TEST(ARepeatedTime, IsTheFirstOfTheTwo) {
    EXPECT_EQ(at("2024-10-27 00:30:00"), at("2024-10-27 02:30:00", "Europe/Berlin"));
    EXPECT_EQ(at("2024-04-06 14:45:00"), at("2024-04-07 01:45:00", "Australia/Lord_Howe"));
    // Clocks go back in Ramadan there.
    EXPECT_EQ(at("2024-03-10 01:30:00"), at("2024-03-10 02:30:00", "Africa/Casablanca"));
}

TEST(Fields, AreCarriedOverIntoTheLargerOnes) {
    const auto carried = [](std::int64_t year, std::int64_t month, std::int64_t day,
                            std::int64_t hour, std::int64_t minute, std::int64_t second) {
        return textOf(CalendarDate::dateWithYear(year, month, day, hour, minute, second, false));
    };
    EXPECT_EQ("2025-01-01 00:00:00", carried(2024, 13, 1, 0, 0, 0));
    EXPECT_EQ("2023-11-30 00:00:00", carried(2024, 0, 0, 0, 0, 0));
    EXPECT_EQ("2024-02-29 23:59:59", carried(2024, 3, 1, 0, 0, -1));
    EXPECT_EQ("2024-01-02 01:01:01", carried(2024, 1, 1, 24, 60, 61));
    EXPECT_EQ("10357-03-01 00:00:00", carried(2024, 99'999, 1, 0, 0, 0));
}

TEST(AddingComponents, IsCalendarArithmetic) {
    const struct {
        const char* zone;
        const char* date;
        DateComponents added;
        const char* sum;
    } rows[] = {
        {"UTC", "2023-01-31 10:00:00", {.month = 1}, "2023-02-28 10:00:00"},
        {"UTC", "2024-01-31 10:00:00", {.month = 1}, "2024-02-29 10:00:00"},
        {"UTC", "2024-02-29 10:00:00", {.year = 1}, "2025-02-28 10:00:00"},
        {"UTC", "2024-02-29 10:00:00", {.year = -4, .month = 12}, "2021-02-28 10:00:00"},
        {"UTC", "2024-03-31 10:00:00", {.month = -1, .day = 1}, "2024-03-01 10:00:00"},
        {"UTC", "2024-12-25 10:00:00", {.weekOfYear = 1}, "2025-01-01 10:00:00"},
        // Days keep the wall clock, hours are as long as they are.
        {"Europe/Berlin", "2024-03-30 09:00:00", {.day = 1}, "2024-03-31 09:00:00"},
        {"Europe/Berlin", "2024-03-30 09:00:00", {.hour = 24}, "2024-03-31 10:00:00"},
        {"Europe/Berlin", "2024-03-30 02:30:00", {.day = 1}, "2024-03-31 03:30:00"},
        {"Europe/Berlin", "2024-03-30 02:30:00", {.day = 2}, "2024-04-01 02:30:00"},
        {"Europe/Berlin", "2024-03-31 01:30:00", {.minute = 30}, "2024-03-31 03:00:00"},
        {"Pacific/Apia", "2011-12-29 09:00:00", {.day = 1}, "2011-12-31 09:00:00"},
        {"Pacific/Apia", "2011-12-29 09:00:00", {.day = 2}, "2011-12-31 09:00:00"},
        {"Pacific/Apia", "2011-12-29 09:00:00", {.hour = 24}, "2011-12-31 09:00:00"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.sum, textOf(localDate(row.date, row.zone).dateByAddingComponents(row.added)))
            << row.date << " + " << row.added.description();
    }
}

TEST(AddingComponents, KeepsTheFractionAndTheSecondOfTwoEqualTimes) {
    const Calendar calendar(zoneNamed("Europe/Berlin"));
    const Instant second = at("2024-10-27 01:30:00") + 0.25; // the second 02:30 of that night
    EXPECT_EQ(second, calendar.dateByAddingComponents({.day = 0}, second));
    EXPECT_EQ(second + 60, calendar.dateByAddingComponents({.minute = 1}, second));
    EXPECT_EQ(second + 25 * 3600 - 3600, calendar.dateByAddingComponents({.day = 1}, second));
}

TEST(DaysBetweenDates, CountOneFurtherBackwards) {
    const Calendar utc(TimeZone::universal());
    const Instant date = at("2024-03-10 12:00:00");
    EXPECT_EQ(0, utc.daysFromDate(date, date));
    EXPECT_EQ(0, utc.daysFromDate(date, date + 86399));
    EXPECT_EQ(1, utc.daysFromDate(date, date + 86400));
    EXPECT_EQ(-1, utc.daysFromDate(date, date - 1));
    EXPECT_EQ(-2, utc.daysFromDate(date, date - 36 * 3600));
    EXPECT_EQ(-2, utc.daysFromDate(date, date - 86400));
}

TEST(DaysBetweenDates, AreDaysOfTheWallClock) {
    const Calendar berlin(zoneNamed("Europe/Berlin"));
    const Instant before = at("2024-03-30 12:00:00", "Europe/Berlin");
    EXPECT_EQ(1, berlin.daysFromDate(before, before + 23 * 3600));
    EXPECT_EQ(0, berlin.daysFromDate(before, before + 23 * 3600 - 1));
    const Calendar apia(zoneNamed("Pacific/Apia"));
    const Instant noon = at("2011-12-29 12:00:00", "Pacific/Apia");
    EXPECT_EQ(0, apia.daysFromDate(noon, at("2011-12-31 11:59:59", "Pacific/Apia")));
    EXPECT_EQ(2, apia.daysFromDate(noon, at("2011-12-31 12:00:00", "Pacific/Apia")));
    // The clock goes back from 00:01 of the 7th to 23:01 of the 6th: the 7th has begun already.
    const Calendar stJohns(zoneNamed("America/St_Johns"));
    const Instant midnight = at("2010-11-07 00:00:30", "America/St_Johns");
    EXPECT_EQ(2,
              stJohns.daysFromDate(at("2010-11-05 00:00:30", "America/St_Johns"), midnight + 1800));
}

TEST(MonthsBetweenDates, EndWithTheMonth) {
    const Calendar utc(TimeZone::universal());
    EXPECT_EQ(1, utc.monthsFromDate(at("2024-01-31 10:00:00"), at("2024-02-29 10:00:00")));
    EXPECT_EQ(0, utc.monthsFromDate(at("2024-01-31 10:00:00"), at("2024-02-29 09:59:59")));
    EXPECT_EQ(-2, utc.monthsFromDate(at("2024-03-31 10:00:00"), at("2024-02-29 10:00:00")));
    EXPECT_EQ(24, utc.monthsFromDate(at("2024-02-29 10:00:00"), at("2026-02-28 10:00:00")));
}

TEST(TheIsoWeek, BelongsToItsThursday) {
    const Calendar utc(TimeZone::universal());
    const struct {
        const char* date;
        int week;
    } rows[] = {
        {"2021-01-01 00:00:00", 53}, {"2021-01-04 00:00:00", 1},  {"2018-12-31 00:00:00", 1},
        {"2020-12-31 00:00:00", 53}, {"2024-12-29 00:00:00", 52}, {"2024-12-30 00:00:00", 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.week, utc.isoWeekNumberForDate(at(row.date), false)) << row.date;
    }
}

TEST(TheIsoWeek, OfTheFollowingMondayIsAWholeCalendarWeeks) {
    Calendar calendar(zoneNamed("Europe/Berlin"));
    const auto week = [&](const std::string& local) {
        return calendar.isoWeekNumberForDate(at(local, "Europe/Berlin"), true);
    };
    EXPECT_EQ(10, week("2024-03-02 00:00:00") + 1); // a Saturday: week 9
    EXPECT_EQ(10, week("2024-03-03 00:00:00"));     // a Sunday, as its Monday
    EXPECT_EQ(10, week("2024-03-09 00:00:00"));
    EXPECT_EQ(10, week("2024-03-02 22:30:00")); // the two hours lead into the Monday
    calendar.setFirstWeekday(2);
    EXPECT_EQ(9, week("2024-03-03 00:00:00"));
    calendar.setFirstWeekday(7);
    EXPECT_EQ(10, week("2024-03-02 00:00:00"));
    EXPECT_EQ(10, week("2024-03-08 00:00:00"));
}

TEST(WeeksOfTheYear, AreThoseOfTheUnicodeCalendar) {
    UErrorCode error = U_ZERO_ERROR;
    icu::GregorianCalendar unicode(*icu::TimeZone::getGMT(), icu::Locale::getRoot(), error);
    for (int rule = 0; rule < 49; ++rule) {
        Calendar calendar(TimeZone::universal());
        calendar.setFirstWeekday(1 + rule % 7);
        calendar.setMinimumDaysInFirstWeek(1 + rule / 7);
        unicode.setFirstDayOfWeek(static_cast<UCalendarDaysOfWeek>(1 + rule % 7));
        unicode.setMinimalDaysInFirstWeek(static_cast<std::uint8_t>(1 + rule / 7));
        for (int day = -400 * 3; day < 400 * 30; day += 1 + (day & 3)) {
            const Instant date(day * 86400.0);
            unicode.setTime(date.secondsSince1970() * 1000, error);
            const auto week = calendar.componentsIncludingWeek(weekNumberUnit, date);
            ASSERT_EQ(unicode.get(UCAL_WEEK_OF_YEAR, error), week.weekNumber())
                << rule << ' ' << day;
            ASSERT_EQ(unicode.get(UCAL_YEAR_WOY, error), week.yearForWeekOfYear);
        }
    }
    EXPECT_TRUE(U_SUCCESS(error));
}

TEST(ACalendar, ReadsTheUnitsThatAreAskedFor) {
    Calendar calendar(zoneNamed("Asia/Tokyo"));
    const Instant date = at("2024-12-31 20:00:00"); // 05:00 of 1 January there
    EXPECT_EQ((DateComponents{.hour = 5, .weekday = 4}),
              calendar.componentsIncludingWeek(hourUnit | weekdayUnit, date));
    EXPECT_EQ((DateComponents{.weekOfYear = 1, .yearForWeekOfYear = 2025}),
              calendar.componentsIncludingWeek(weekNumberUnit, date));
    calendar.setFirstWeekday(0);
    calendar.setMinimumDaysInFirstWeek(8);
    EXPECT_EQ(1, calendar.firstWeekday());
    EXPECT_EQ(1, calendar.minimumDaysInFirstWeek());
}

} // namespace
} // namespace plenzo
