#include "model/alarm_computation.h"
#include "support/instants.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double day = 86400;
const std::optional<Instant> withoutIssueTime;

class TheAlarmsOfAnEvent : public testing::Test {
protected:
    [[nodiscard]] AlarmContext context() const { return {.now = now, .systemZone = berlin}; }

    /// Seconds from now to each alarm's fire date.
    [[nodiscard]] std::vector<double>
    leadTimes(const Dictionary& eventDict, std::optional<Instant> issueTime = withoutIssueTime,
              ProximityAlarms proximityAlarms = ProximityAlarms::Exclude) const {
        std::vector<double> result;
        const auto record = std::make_shared<Dictionary>(eventDict);
        for (const Alarm& alarm :
             alarmsForEventDict(record, issueTime, proximityAlarms, context())) {
            result.push_back(alarm.fireDate ? alarm.fireDate->instant() - now : -1);
        }
        return result;
    }

    static Dictionary reminder(double seconds, int type = 0) {
        return {{keys::uid, "r"}, {keys::rel, seconds}, {keys::type, type}};
    }
    [[nodiscard]] Dictionary eventIn(double seconds, const Array& reminders) const {
        return {{keys::uid, "e"}, {keys::date, (now + seconds).date()}, {keys::rem, reminders}};
    }

    const TimeZone berlin = zone("Europe/Berlin");
    const Instant now = utc(2026, 3, 10, 12);
};

TEST_F(TheAlarmsOfAnEvent, AreThoseStillToComeWithinFourteenDays) {
    EXPECT_THAT(leadTimes(eventIn(3600, {reminder(-900)})), ElementsAre(2700));
    EXPECT_THAT(leadTimes(eventIn(900, {reminder(-900)})), ElementsAre(0));
    EXPECT_THAT(leadTimes(eventIn(899, {reminder(-900)})), IsEmpty());
    EXPECT_THAT(leadTimes(eventIn(14 * day, {reminder(0)})), ElementsAre(14 * day));
    EXPECT_THAT(leadTimes(eventIn(14 * day + 1, {reminder(0)})), IsEmpty());
    EXPECT_THAT(leadTimes(eventIn(3600, {Dictionary{{keys::uid, "r"}}})), ElementsAre(3600));
}

TEST_F(TheAlarmsOfAnEvent, AreThoseSinceTheIssueTimeHoweverFarAhead) {
    const Instant issued = now - 3600;
    EXPECT_THAT(leadTimes(eventIn(-3600, {reminder(0), reminder(-1)}), issued), ElementsAre(-3600));
    EXPECT_THAT(leadTimes(eventIn(15 * day, {reminder(0)}), issued), ElementsAre(15 * day));
    EXPECT_THAT(leadTimes(eventIn(400 * day, {reminder(0)}), issued), ElementsAre(400 * day));
}

TEST_F(TheAlarmsOfAnEvent, EndWithAnAcknowledgementAfterTheyWereDue) {
    const auto acknowledged = [this](double secondsAfterDue) {
        Dictionary entry = reminder(0);
        entry.set(keys::ack, (now + 3600 + secondsAfterDue).date());
        return leadTimes(eventIn(3600, {entry}));
    };
    EXPECT_THAT(acknowledged(-1), ElementsAre(3600));
    EXPECT_THAT(acknowledged(0), ElementsAre(3600));
    EXPECT_THAT(acknowledged(1), IsEmpty());
}

TEST_F(TheAlarmsOfAnEvent, OfTheAbsoluteKindCountTheDaysToTheEvent) {
    const Dictionary absolute{{keys::abs, (now + 60).date()}, {keys::rel, -900}};
    const auto fireDay = [this](const Dictionary& eventDict) {
        const auto record = std::make_shared<Dictionary>(eventDict);
        const auto alarms =
            alarmsForEventDict(record, withoutIssueTime, ProximityAlarms::Exclude, context());
        return alarms.size() == 1 ? alarms.front().fireDay : -1;
    };
    EXPECT_THAT(leadTimes(eventIn(3600, {absolute})), ElementsAre(60));
    EXPECT_EQ(fireDay(eventIn(0, {absolute})), 0);
    EXPECT_EQ(fireDay(eventIn(12 * 3600, {absolute})), 1) << "midnight UTC lies between";
    EXPECT_EQ(fireDay(eventIn(-3 * day, {absolute})), 3);
    EXPECT_EQ(fireDay(Dictionary{{keys::rem, Array{absolute}}}), 9199)
        << "an undated item counts from the reference date";
    EXPECT_EQ(fireDay(eventIn(3 * day, {reminder(-2 * day)})), 0) << "relative ones have none";
}

TEST_F(TheAlarmsOfAnEvent, OfItsPlaceComeOnlyWhenAskedForAndOthersOfUndatedItemsNever) {
    const Dictionary undated{{keys::rem, Array{reminder(0, 10), reminder(0, 0)}}};
    const Dictionary past = eventIn(-60, {reminder(0, 10), reminder(0, 0)});
    EXPECT_THAT(leadTimes(undated), IsEmpty());
    EXPECT_THAT(leadTimes(past), IsEmpty());
    EXPECT_THAT(leadTimes(undated, withoutIssueTime, ProximityAlarms::IncludeAll), ElementsAre(-1));
    EXPECT_THAT(leadTimes(past, withoutIssueTime, ProximityAlarms::IncludeAll), ElementsAre(-60));
    EXPECT_THAT(leadTimes(eventIn(60, {reminder(0, 3), reminder(0, 77)})), ElementsAre(60))
        << "a reminder without an action has no alarm, one of an unknown kind has";
}

TEST_F(TheAlarmsOfAnEvent, NeedRecordsOfTheRightShape) {
    EXPECT_TRUE(
        alarmsForEventDict(nullptr, withoutIssueTime, ProximityAlarms::Exclude, context()).empty());
    EXPECT_THAT(leadTimes({{keys::rem, "soon"}}), IsEmpty());
    EXPECT_THAT(leadTimes(eventIn(60, {"text", Array{}, 5})), IsEmpty());
    EXPECT_THAT(leadTimes(eventIn(60, {reminder(std::numeric_limits<double>::infinity()),
                                       reminder(std::numeric_limits<double>::quiet_NaN()),
                                       Dictionary{{keys::rel, " 30 "}}})),
                ElementsAre(90));
    EXPECT_THAT(leadTimes({{keys::date, Date{1e300}}, {keys::rem, Array{reminder(0)}}}), IsEmpty());
}

class TheLocalDateOfAnEvent : public testing::Test {
protected:
    struct Flags {
        bool allDay = false;
        bool floating = false;
        bool carry = false;
    };
    static Dictionary eventAt(Instant date, Flags flags) {
        return {{keys::date, date.date()},
                {keys::allDay, flags.allDay},
                {keys::floating, flags.floating},
                {keys::carry, flags.carry}};
    }
    [[nodiscard]] std::optional<Instant> localDate(const Dictionary& eventDict,
                                                   const char* zoneName,
                                                   CarryForward carry = CarryForward::No) const {
        const AlarmContext context{.now = now, .systemZone = zone(zoneName)};
        const auto date = eventDateInLocalTime(eventDict, carry, context);
        return date ? std::optional(date->instant()) : std::nullopt;
    }

    const Instant now = utc(2026, 3, 10, 12);
};

TEST_F(TheLocalDateOfAnEvent, IsTheStartOfItsDayWhenItTakesAllDay) {
    for (const char* name :
         {"Europe/Berlin", "America/New_York", "Pacific/Kiritimati", "Asia/Kolkata", "Universal"}) {
        for (const int hour : {0, 12}) {
            const Dictionary eventDict = eventAt(utc(2024, 3, 10, hour), {.allDay = true});
            EXPECT_EQ(localDate(eventDict, name), instantIn(zone(name), 2024, 3, 10)) << name;
        }
    }
    EXPECT_EQ(localDate(eventAt(utc(2011, 12, 30, 12), {.allDay = true}), "Pacific/Apia"),
              instantIn(zone("Pacific/Apia"), 2011, 12, 31))
        << "a day that the zone skipped";
}

TEST_F(TheLocalDateOfAnEvent, KeepsItsWallClockWhenItFloats) {
    const auto floating = [this](Instant wallClock, const char* zoneName) {
        return localDate(eventAt(wallClock, {.floating = true}), zoneName);
    };
    EXPECT_EQ(floating(utc(2026, 7, 1, 9, 30, 15), "Europe/Berlin"), utc(2026, 7, 1, 7, 30, 15));
    EXPECT_EQ(floating(utc(2026, 7, 1, 9, 30), "America/New_York"), utc(2026, 7, 1, 13, 30));
    EXPECT_EQ(floating(utc(2026, 3, 29, 2, 30), "Europe/Berlin"), utc(2026, 3, 29, 1, 30))
        << "a time that the zone skipped moves forward to 03:30";
    EXPECT_EQ(floating(utc(2026, 10, 25, 2, 30), "Europe/Berlin"), utc(2026, 10, 25, 0, 30))
        << "of a time that comes twice the first";
}

TEST_F(TheLocalDateOfAnEvent, IsThatOfItsCompletion) {
    Dictionary eventDict = eventAt(utc(2026, 3, 1, 12), {.allDay = true, .carry = true});
    eventDict.set(keys::completionDate, utc(2026, 3, 5, 17, 45).date());
    EXPECT_EQ(localDate(eventDict, "Europe/Berlin", CarryForward::Yes), utc(2026, 3, 5, 17, 45));
}

TEST_F(TheLocalDateOfAnEvent, MovesToTodayWhenItIsCarriedForward) {
    const Dictionary overdue = eventAt(utc(2026, 3, 9, 8), {.carry = true});
    EXPECT_EQ(localDate(overdue, "Europe/Berlin", CarryForward::No), utc(2026, 3, 9, 8));
    EXPECT_EQ(localDate(overdue, "Europe/Berlin", CarryForward::Yes), utc(2026, 3, 10, 8));
    EXPECT_EQ(localDate(overdue, "Pacific/Kiritimati", CarryForward::Yes), utc(2026, 3, 11, 8))
        << "where it is the 11th already and the wall clock shows 22:00";
    const Dictionary ahead = eventAt(utc(2026, 3, 12, 8), {.carry = true});
    EXPECT_EQ(localDate(ahead, "Europe/Berlin", CarryForward::Yes), utc(2026, 3, 12, 8));
    const Dictionary kept = eventAt(utc(2026, 3, 9, 8), {});
    EXPECT_EQ(localDate(kept, "Europe/Berlin", CarryForward::Yes), utc(2026, 3, 9, 8));
}

TEST_F(TheLocalDateOfAnEvent, IsMissingWithoutAReadableDate) {
    EXPECT_EQ(localDate({}, "Europe/Berlin"), std::nullopt);
    EXPECT_EQ(localDate({{keys::date, "2026-03-10"}}, "Europe/Berlin"), std::nullopt);
    EXPECT_EQ(localDate({{keys::date, Date{1e300}}, {keys::allDay, true}}, "Europe/Berlin"),
              std::nullopt);
}

} // namespace
} // namespace plenzo
