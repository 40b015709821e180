// Whatever a record holds, what is read from it keeps its promises, and what is sound in it counts.

#include "model/alarm_computation.h"
#include "model/alarm_order.h"
#include "model/occurrence_text.h"
#include "model/random_alarms.h"
#include "model/reminder.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/random_values.h"
#include "support/instants.h"
#include "support/sample_records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {
namespace {

class ARecordOfAnyContent : public testing::Test {
protected:
    void expectPromisesKept(const Dictionary& record) const {
        expectSoundAlarms(std::make_shared<Dictionary>(record));
        expectSoundDate(record);
        expectSoundReminder(record);
    }

    [[nodiscard]] std::vector<Alarm>
    alarms(const EventDict& record, std::optional<Instant> issueTime = std::nullopt,
           ProximityAlarms proximityAlarms = ProximityAlarms::Exclude) const {
        return alarmsForEventDict(record, issueTime, proximityAlarms, context);
    }

    const Instant now = utc(2026, 3, 10, 12);
    const AlarmContext context{.now = now, .systemZone = zone("Europe/Berlin")};
    const TitleOrder titles{"en_US"};

private:
    void expectSoundAlarms(const EventDict& record) const {
        for (const std::optional<Instant> issueTime :
             {std::optional<Instant>(), std::optional(now - 86400)}) {
            for (const auto asked : {ProximityAlarms::Exclude, ProximityAlarms::IncludeAll}) {
                const auto found = alarms(record, issueTime, asked);
                expectInOrderOf(record->arrayForKey(keys::rem), found);
                for (const Alarm& alarm : found) {
                    expectToCome(alarm, issueTime, asked);
                }
            }
        }
        for (const Alarm& alarm : alarms(record, std::nullopt, ProximityAlarms::IncludeAll)) {
            expectSoundAlarm(alarm);
        }
    }
    /// Each is of an entry, none twice, in the order of the entries.
    static void expectInOrderOf(const Array* reminders, const std::vector<Alarm>& found) {
        const Array none;
        const Array& entries = reminders != nullptr ? *reminders : none;
        const Value* next = entries.begin();
        for (const Alarm& alarm : found) {
            next = std::find(next, entries.end(), Value(alarm.reminderDict.value()));
            ASSERT_NE(next, entries.end());
            ++next;
        }
    }
    void expectToCome(const Alarm& alarm, std::optional<Instant> issueTime,
                      ProximityAlarms asked) const {
        const bool isByPlace =
            asked == ProximityAlarms::IncludeAll && alarm.reminderType() == ReminderType::Proximity;
        EXPECT_NE(alarm.reminderType(), ReminderType::NoAction);
        EXPECT_GE(alarm.fireDay, 0);
        ASSERT_TRUE(alarm.fireDate || isByPlace);
        if (alarm.fireDate) {
            const Instant fireDate = alarm.fireDate->instant();
            EXPECT_TRUE(isByPlace || fireDate >= issueTime.value_or(now));
            EXPECT_TRUE(issueTime || fireDate <= now + alarmHorizonSeconds);
        }
    }
    void expectSoundAlarm(const Alarm& alarm) const {
        EXPECT_TRUE(std::is_eq(compare(alarm, alarm, titles)));
        EXPECT_TRUE(std::is_eq(compareFireDate(alarm, alarm, titles)));
        const auto file = writeBinaryPropertyList(dictionaryRepresentation(alarm));
        const auto read = readBinaryPropertyList(file);
        ASSERT_TRUE(read && read->dictionary());
        const Alarm restored =
            alarmFromDictionaryRepresentation(*read->dictionary(), context.systemZone);
        EXPECT_EQ(restored.fireDate, alarm.fireDate);
        EXPECT_EQ(restored.reminderDict.has_value(), alarm.fireDate.has_value());
    }
    void expectSoundDate(const Dictionary& record) const {
        const auto isReadable = [&](const Key& key) {
            const auto date = record.dateForKey(key);
            return date && Instant(*date).isReadable();
        };
        const auto date = eventDateInLocalTime(record, CarryForward::No, context);
        EXPECT_EQ(date.has_value(), isReadable(keys::date) || isReadable(keys::completionDate));
        const auto carried = eventDateInLocalTime(record, CarryForward::Yes, context);
        ASSERT_EQ(carried.has_value(), date.has_value());
        if (carried && *carried != *date) {
            EXPECT_LT(date->instant(), now);
            EXPECT_LT(std::abs(carried->instant() - now), 86400);
        }
        Alarm row;
        row.eventDict = std::make_shared<Dictionary>(record);
        const std::string range = dateRangeToString(row, context, "en_US");
        EXPECT_FALSE(range.empty());
        EXPECT_LT(range.size(), 150U);
    }
    static void expectSoundReminder(const Dictionary& record) {
        const Reminder reminder = reminderFromDictionary(record);
        EXPECT_EQ(reminder.title.has_value(), record.stringForKey(keys::title).has_value());
        EXPECT_EQ(reminder.absoluteTime.has_value(),
                  record.dateForKey(keys::absoluteTime).has_value());
        EXPECT_EQ(reminder.recipients.has_value(), record.arrayForKey(keys::recipients) != nullptr);
    }
};

TEST_F(ARecordOfAnyContent, KeepsItsPromisesWithAnyValueUnderAnyKey) {
    for (const Key& key : {keys::uid,
                           keys::type,
                           keys::title,
                           keys::date,
                           keys::end,
                           keys::allDay,
                           keys::floating,
                           keys::carry,
                           keys::completed,
                           keys::completionDate,
                           keys::priority,
                           keys::holiday,
                           keys::rem,
                           keys::reminderType,
                           keys::relativeSeconds,
                           keys::absoluteTime,
                           keys::note,
                           keys::url,
                           keys::recipients,
                           keys::xProps}) {
        for (std::size_t number = 0; number < nastyValues().size(); ++number) {
            SCOPED_TRACE(std::string(key.name()) + ", nasty value " + std::to_string(number));
            Dictionary record = RandomAlarms(1).recordWithSoundReminders(now + 3600);
            record.set(key, nastyValues()[number]);
            expectPromisesKept(record);
        }
    }
}

TEST_F(ARecordOfAnyContent, KeepsItsPromisesWithAnyValueUnderAnyKeyOfAReminder) {
    for (const Key& key : {keys::uid, keys::type, keys::abs, keys::rel, keys::ack, keys::url}) {
        for (std::size_t number = 0; number < nastyValues().size(); ++number) {
            SCOPED_TRACE(std::string(key.name()) + ", nasty value " + std::to_string(number));
            const Dictionary reminder{{key, nastyValues()[number]}};
            const Value date = (now + 3600).date();
            expectPromisesKept({{keys::date, date}, {keys::rem, Array{reminder}}});
            expectPromisesKept({{keys::date, date}, {keys::rem, reminder}});
        }
    }
}

TEST_F(ARecordOfAnyContent, KeepsItsPromisesWhenItsFileWasDamaged) {
    int readCount = 0;
    for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const auto bytes = writeBinaryPropertyList(sampleRecord(seed));
        const std::string file(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        const std::string damaged = RandomValues(seed).damaged(file);
        const auto read = readBinaryPropertyList(std::as_bytes(std::span(damaged)));
        if (read && read->dictionary() != nullptr) {
            expectPromisesKept(*read->dictionary());
            ++readCount;
        }
    }
    EXPECT_GT(readCount, 300) << "too few to tell anything";
}

TEST_F(ARecordOfAnyContent, HasTheAlarmsOfItsSoundRemindersAmongAnyOthers) {
    for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
        RandomAlarms random(seed);
        Dictionary record = random.recordWithSoundReminders(now + 3600);
        for (std::uint32_t count = random.below(4); count > 0; --count) {
            static const std::vector<Key> keysOfNoDate{
                keys::uid, keys::type,     keys::title,   keys::end,   keys::carry, keys::completed,
                keys::del, keys::priority, keys::holiday, keys::color, keys::notes, Key("unheard")};
            record.set(keysOfNoDate[random.below(12)], random.nastyValue());
        }
        const auto found = alarms(std::make_shared<Dictionary>(record));
        ASSERT_GE(found.size(), 2U) << "seed " << seed;
        EXPECT_EQ(found.front().reminderText(keys::uid), "first") << "seed " << seed;
        EXPECT_EQ(found.back().reminderText(keys::uid), "last") << "seed " << seed;
        EXPECT_EQ(found.back().fireDate->instant(), now + 3600) << "seed " << seed;
    }
}

TEST_F(ARecordOfAnyContent, MayHaveAHundredThousandReminders) {
    constexpr std::size_t count = 100000;
    Array reminders;
    for (std::size_t number = 0; number < count; ++number) {
        reminders.append(
            number % 2 == 0
                ? Value(Dictionary{{keys::uid, "r" + std::to_string(number)}, {keys::rel, number}})
                : nastyValues()[number % nastyValues().size()]);
    }
    const auto record = std::make_shared<Dictionary>(
        Dictionary{{keys::date, now.date()}, {keys::rem, std::move(reminders)}});
    std::vector<Alarm> found = alarms(record);
    std::erase_if(found, [](const Alarm& alarm) { return alarm.reminderText(keys::uid).empty(); });
    ASSERT_EQ(found.size(), count / 2);
    EXPECT_EQ(found.back().reminderText(keys::uid), "r99998");
    EXPECT_EQ(found.back().fireDate->instant(), now + 99998);
    EXPECT_TRUE(
        std::is_sorted(found.begin(), found.end(), [&](const Alarm& left, const Alarm& right) {
            return std::is_lt(compareFireDate(left, right, titles));
        }));
}

TEST_F(ARecordOfAnyContent, MayHaveMegabytesOfText) {
    const std::string megabytes(4 << 20, 'x');
    Dictionary record = RandomAlarms(1).recordWithSoundReminders(now + 3600);
    for (const Key& key : {keys::uid, keys::title, keys::location, keys::notes, keys::url}) {
        record.set(key, megabytes);
    }
    expectPromisesKept(record);
    Alarm alarm;
    alarm.eventDict = std::make_shared<Dictionary>(record);
    Alarm later = alarm;
    later.eventDict = std::make_shared<Dictionary>(record);
    later.eventDict->set(keys::title, megabytes + "y");
    EXPECT_TRUE(std::is_lt(compare(alarm, later, titles)));
    EXPECT_TRUE(std::is_gt(compareFireDate(later, alarm, titles)));
}

} // namespace
} // namespace plenzo
