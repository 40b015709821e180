// Whatever a record holds, what is read from it keeps its promises, and what is sound in it counts.

#include "model/alarm_computation.h"
#include "model/alarm_order.h"
#include "model/nasty_values.h"
#include "model/random_alarms.h"
#include "model/record_promises.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/random_values.h"
#include "support/instants.h"
#include "support/sample_records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {
namespace {

class ARecordOfAnyContent : public testing::Test {
protected:
    void expectPromisesKept(const Dictionary& record) const { m_promises.expectKept(record); }

    [[nodiscard]] std::vector<Alarm> alarms(const Dictionary& record) const {
        return alarmsForEventDict(std::make_shared<Dictionary>(record), std::nullopt,
                                  ProximityAlarms::Exclude, context);
    }

    const Instant now = utc(2026, 3, 10, 12);
    const AlarmContext context{.now = now, .systemZone = zone("Europe/Berlin")};
    const TitleOrder titles{"en_US"};

private:
    RecordPromises m_promises{context};
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
        const auto found = alarms(record);
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
    std::vector<Alarm> found =
        alarms({{keys::date, now.date()}, {keys::rem, std::move(reminders)}});
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
