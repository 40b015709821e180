// Dates and fields that no calendar has: they must be refused or held at the range's end.

#include "dates/local_dates.h"

#include <cmath>
#include <limits>
#include <vector>

namespace plenzo {
namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max() - 1;
constexpr double infinity = std::numeric_limits<double>::infinity();

const std::vector<double> unreadableSeconds{
    1.1e13,   -1.1e13,   9.3e18,      -9.3e18, std::numeric_limits<double>::max(),
    infinity, -infinity, std::nan("")};

TEST(AnUnreadableInstant, GivesNoCalendarDate) {
    for (const double seconds : unreadableSeconds) {
        EXPECT_FALSE(CalendarDate::calendarDateWithDate(Instant(seconds)).has_value()) << seconds;
        EXPECT_FALSE(CalendarDate::dateWithTimeIntervalSince1970(seconds, true).has_value());
        EXPECT_FALSE(normalizedDateWithAllDay(Instant(seconds), false).has_value());
        EXPECT_FALSE(CalendarDate().calendarDateByAddingTimeInterval(seconds).has_value());
        EXPECT_FALSE(CalendarDate().dateByAddingTimeInterval(seconds).has_value());
    }
}

TEST(AnUnreadableInstant, IsBroughtToTheNearestReadableOne) {
    EXPECT_EQ("318888-", textOf(CalendarDate(Instant(infinity))).substr(0, 7));
    EXPECT_EQ("-314887", textOf(CalendarDate(Instant(-1e300))).substr(0, 7));
    EXPECT_EQ(CalendarDate(), CalendarDate(Instant(std::nan(""))));
    EXPECT_EQ(3600, zoneNamed("Europe/Berlin").offsetSeconds(Instant(std::nan(""))));
}

TEST(AnUnreadableInstant, HasNoCalendarUnits) {
    const Calendar calendar(zoneNamed("Europe/Berlin"));
    for (const double seconds : unreadableSeconds) {
        const Instant date(seconds);
        EXPECT_EQ(DateComponents(), calendar.componentsIncludingWeek(yearUnit | dayUnit, date));
        EXPECT_FALSE(calendar.dateByAddingComponents({.day = 0}, date).has_value());
        EXPECT_EQ(0, calendar.daysFromDate(date, Instant()));
        EXPECT_EQ(0, calendar.monthsFromDate(Instant(), date));
        EXPECT_EQ(0, calendar.isoWeekNumberForDate(date, true));
    }
}

TEST(AbsurdFields, AreRefused) {
    const std::int64_t absurd[] = {smallest,  smallest + 1,    largest,     undefinedComponent,
                                   1LL << 53, 400'000'000'000, -(1LL << 60)};
    for (const auto field :
         {&DateComponents::year, &DateComponents::month, &DateComponents::day,
          &DateComponents::hour, &DateComponents::minute, &DateComponents::second}) {
        for (const std::int64_t value : absurd) {
            DateComponents components = componentsOf("2024-01-01 00:00:00");
            components.*field = value;
            if (field == &DateComponents::second && value == 400'000'000'000) {
                continue; // which is in the year 14699
            }
            EXPECT_FALSE(CalendarDate::dateWithComponents(components, false).has_value()) << value;
            DateComponents added;
            added.*field = value;
            const bool addsNothing = value == undefinedComponent;
            const auto sum = CalendarDate().dateByAddingComponents(added);
            EXPECT_EQ(addsNothing, sum.has_value()) << value;
            EXPECT_EQ(addsNothing, CalendarDate()
                                       .calendarDateByApplyingComps(added, TimeZone::universal())
                                       .has_value());
        }
    }
}

TEST(TheEndsOfTheRange, AreReadWrittenAndCompared) {
    for (const char* name : {"Universal", "Pacific/Kiritimati", "America/Los_Angeles",
                             "Pacific/Apia", "Africa/Casablanca", "Africa/Monrovia"}) {
        const TimeZone zone = zoneNamed(name);
        for (const double seconds : {1e13, -1e13}) {
            const CalendarDate end(Instant(seconds), zone);
            const CalendarDate inside(Instant(seconds * 0.99), zone);
            // The wall clock of the end is up to 14 hours beyond it when read in UTC.
            const CalendarDate again =
                end.floatingTimeFromLocalTime().localTimeFromFloatingTime(zone);
            EXPECT_NEAR(seconds, again.instant().secondsSinceReferenceDate(), 14 * 3600) << name;
            EXPECT_EQ(inside, CalendarDate::dateWithComponents(
                                  DateComponents::fromFields(inside.fields()), false, zone));
            EXPECT_FALSE(end.dateByAddingComponents({.day = seconds > 0 ? 2 : -2}).has_value());
        }
    }
    const Calendar utc(TimeZone::universal());
    EXPECT_EQ(231481481, utc.daysFromDate(Instant(-1e13), Instant(1e13)));
    EXPECT_EQ(-7605298, utc.monthsFromDate(Instant(1e13), Instant(-1e13)));
}

} // namespace
} // namespace plenzo
