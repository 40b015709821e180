#include "model/alarm.h"
#include "model/occurrence_text.h"
#include "model/reminder.h"
#include "propertylist/binary_property_list.h"
#include "support/instants.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace plenzo {
namespace {

const Dictionary someEvent{{keys::uid, "e"}, {keys::title, "Lunch"}};
const Dictionary someReminder{{keys::uid, "r"}, {keys::rel, -900}};

Alarm someAlarm() {
    Alarm alarm;
    alarm.fireDate = CalendarDate(Instant(1000.5), zone("Asia/Tokyo"));
    alarm.eventDict = std::make_shared<Dictionary>(someEvent);
    alarm.reminderDict = someReminder;
    alarm.fireDay = 3;
    alarm.carryover = true;
    return alarm;
}

TEST(ThePersistedFormOfAnAlarm, EndsAtTheFirstThingThatIsMissing) {
    Alarm alarm = someAlarm();
    EXPECT_EQ(Value(dictionaryRepresentation(alarm)),
              Value(Dictionary{{Key("fireDate"), Date{1000.5}},
                               {Key("eventDict"), someEvent},
                               {Key("reminderDict"), someReminder}}));
    alarm.eventDict = nullptr;
    EXPECT_EQ(Value(dictionaryRepresentation(alarm)),
              Value(Dictionary{{Key("fireDate"), Date{1000.5}}}));
    alarm = someAlarm();
    alarm.fireDate.reset();
    EXPECT_TRUE(dictionaryRepresentation(alarm).empty());
}

TEST(ThePersistedFormOfAnAlarm, GoesRoundThroughAFileWithoutItsPlaceInAList) {
    const auto bytes = writeBinaryPropertyList(dictionaryRepresentation(someAlarm()));
    const auto read = readBinaryPropertyList(bytes);
    ASSERT_TRUE(read && read->dictionary());
    const Alarm alarm = alarmFromDictionaryRepresentation(*read->dictionary(), zone("Asia/Tokyo"));
    EXPECT_EQ(alarm.fireDate, someAlarm().fireDate);
    EXPECT_EQ(Value(*alarm.eventDict), Value(someEvent));
    EXPECT_EQ(Value(alarm.reminderDict.value()), Value(someReminder));
    EXPECT_EQ(alarm.fireDay, 0);
    EXPECT_FALSE(alarm.carryover);
    EXPECT_FALSE(alarm.isHeader());
}

TEST(ThePersistedFormOfAnAlarm, MayHoldAnything) {
    for (const Dictionary& dictionary :
         {Dictionary(), Dictionary{{keys::fireDate, "soon"}, {keys::eventDict, Array()}},
          Dictionary{{keys::fireDate, Date{1e300}}, {keys::reminderDict, 5}}}) {
        const Alarm alarm = alarmFromDictionaryRepresentation(dictionary, TimeZone());
        EXPECT_FALSE(alarm.fireDate);
        EXPECT_EQ(alarm.eventDict, nullptr);
        EXPECT_FALSE(alarm.reminderDict);
    }
}

TEST(AHeadingRow, IsNothingButItsText) {
    const Alarm header = alarmHeaderFromString("");
    EXPECT_TRUE(header.isHeader());
    EXPECT_EQ(header.representedObject(), nullptr);
    EXPECT_EQ(header.eventText(keys::title), "");
    EXPECT_EQ(header.reminderText(keys::uid), "");
    EXPECT_FALSE(someAlarm().isHeader());
}

TEST(AReminderOfTheOlderForm, IsReadAsFarAsItGoes) {
    const Reminder empty = reminderFromDictionary({{Key("title"), 5}, {Key("recipients"), "a"}});
    EXPECT_EQ(empty.reminderType, 0);
    EXPECT_EQ(empty.relativeSeconds, 0.0);
    EXPECT_FALSE(empty.absoluteTime || empty.title || empty.note || empty.url || empty.recipients ||
                 empty.xProps);
    const Reminder full = reminderFromDictionary({{Key("reminderType"), "2"},
                                                  {Key("relativeSeconds"), -90.5},
                                                  {Key("absoluteTime"), Date{7}},
                                                  {Key("title"), "T"},
                                                  {Key("note"), "N"},
                                                  {Key("url"), "U"},
                                                  {Key("recipients"), Array{"a@b"}},
                                                  {Key("xProps"), Dictionary{{Key("X"), 1}}}});
    EXPECT_EQ(full.reminderType, 2);
    EXPECT_EQ(full.relativeSeconds, -90.5);
    EXPECT_EQ(full.absoluteTime, Instant(7));
    EXPECT_EQ(full.title, "T");
    EXPECT_EQ(full.note, "N");
    EXPECT_EQ(full.url, "U");
    EXPECT_EQ(full.recipients->size(), 1U);
    EXPECT_EQ(full.xProps->integerForKey("X"), 1);
}

class TheDateRangeOfAnAlarm : public testing::Test {
protected:
    [[nodiscard]] std::string range(std::optional<Instant> start, double durationSeconds,
                                    bool allDay = false) const {
        Alarm alarm;
        alarm.fireDate = CalendarDate(utc(2026, 3, 1, 7), zone("Europe/Berlin"));
        alarm.eventDict = std::make_shared<Dictionary>(Dictionary{{keys::allDay, allDay}});
        if (start) {
            alarm.eventDict->set(keys::date, start->date());
            alarm.eventDict->set(keys::end, (*start + durationSeconds).date());
        }
        const AlarmContext context{.now = utc(2026, 3, 10, 12),
                                   .systemZone = zone("Europe/Berlin")};
        return dateRangeToString(alarm, context, "en_US");
    }
};

TEST_F(TheDateRangeOfAnAlarm, IsOneTextWhenItIsOneMomentOrOneDay) {
    const Instant nine = utc(2026, 3, 12, 8);
    EXPECT_EQ(range(nine, 0), "Thursday, March 12, 2026 at 9:00 AM CET");
    EXPECT_EQ(range(nine, 59), "Thursday, March 12, 2026 at 9:00 AM CET") << "of one minute";
    EXPECT_EQ(range(utc(2026, 3, 12, 12), 0, true), "Thursday, March 12, 2026");
    EXPECT_EQ(range(utc(2026, 3, 12, 12), 86399, true), "Thursday, March 12, 2026");
    EXPECT_EQ(range(std::nullopt, 0), "Sunday, March 1, 2026 at 8:00 AM CET")
        << "an undated item has the date of its alarm";
    for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(range(nine, seconds), range(nine, 0)) << "an end beyond all years: " << seconds;
    }
}

TEST_F(TheDateRangeOfAnAlarm, NamesTheZoneAfterTheEndAndTheDateOfAnotherDay) {
    const Instant nine = utc(2026, 3, 12, 8);
    EXPECT_EQ(range(nine, 3600), "Thursday, March 12, 2026 at 9:00 AM - 10:00 AM CET");
    EXPECT_EQ(range(nine, 86400), "Thursday, March 12, 2026 at 9:00 AM - "
                                  "Friday, March 13, 2026 at 9:00 AM CET");
    EXPECT_EQ(range(utc(2026, 3, 12, 12), 2 * 86400, true),
              "Thursday, March 12, 2026 - Saturday, March 14, 2026");
    EXPECT_EQ(range(utc(2026, 3, 28, 22), 6 * 3600), "Saturday, March 28, 2026 at 11:00 PM - "
                                                     "Sunday, March 29, 2026 at 6:00 AM CEST")
        << "across the change to summer time";
}

} // namespace
} // namespace plenzo
