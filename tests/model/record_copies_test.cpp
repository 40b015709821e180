// What must hold of copies of any record, and of the files that alarms are kept in.

#include "model/alarm.h"
#include "model/random_alarms.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/random_values.h"
#include "support/instants.h"
#include "support/sample_records.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using Bytes = std::vector<std::byte>;

class AnyRecord : public testing::TestWithParam<std::uint32_t> {
protected:
    /// Usual entries, and others with a few levels in them.
    Dictionary record() {
        Dictionary record = sampleRecord(m_random.below(1000));
        for (std::uint32_t count = m_random.below(5); count > 0; --count) {
            record.set(m_random.recordKey(), m_values.collection());
        }
        return record;
    }
    Alarm alarm() {
        Alarm alarm;
        if (m_random.below(5) > 0) {
            const double seconds = 8.0e8 + 0.125 * m_random.below(1000000);
            alarm.fireDate = CalendarDate(Instant(seconds), zone("Asia/Tokyo"));
        }
        if (m_random.below(5) > 0) {
            alarm.eventDict = std::make_shared<Dictionary>(record());
        }
        if (m_random.below(5) > 0) {
            alarm.reminderDict = record();
        }
        alarm.fireDay = m_random.below(5);
        alarm.carryover = m_random.below(2) == 0;
        return alarm;
    }

    /// Sets, adds or removes something, at any level.
    void change(Dictionary& dictionary) {
        if (dictionary.empty() || m_random.below(4) == 0) {
            dictionary.set(m_random.recordKey(), newValue());
            return;
        }
        const Key key = (dictionary.begin() + m_random.below(sizeOf(dictionary)))->key;
        if (m_random.below(6) == 0) {
            dictionary.remove(key);
        } else {
            change(*dictionary.findMutable(key));
        }
    }

    RandomAlarms m_random{GetParam()};

private:
    template <typename Collection>
    static std::uint32_t sizeOf(const Collection& collection) {
        return static_cast<std::uint32_t>(collection.size());
    }
    /// Of which no record has the like.
    Value newValue() { return "change " + std::to_string(++m_changeCount); }

    void change(Value& value) {
        if (Dictionary* dictionary = value.mutableDictionary()) {
            change(*dictionary);
        } else if (Array* array = value.mutableArray()) {
            change(*array);
        } else {
            value = newValue();
        }
    }
    void change(Array& array) {
        const std::uint32_t index = array.empty() ? 0 : m_random.below(sizeOf(array));
        if (array.empty() || m_random.below(6) == 0) {
            array.append(newValue());
        } else if (m_random.below(6) == 0) {
            array.remove(index);
        } else {
            change(*array.findMutable(index));
        }
    }

    RandomValues m_values{GetParam()};
    int m_changeCount = 0;
};

TEST_P(AnyRecord, EqualsItsCopyUntilOneOfTheTwoIsChanged) {
    for (int round = 0; round < 300; ++round) {
        Dictionary original = record();
        Dictionary copy = original;
        EXPECT_EQ(copy, original);
        const Bytes before = writeBinaryPropertyList(original);
        Dictionary& changed = round % 2 == 0 ? copy : original;
        const Dictionary& kept = round % 2 == 0 ? original : copy;
        change(changed);
        EXPECT_NE(Value(changed), Value(kept)) << "round " << round;
        EXPECT_EQ(writeBinaryPropertyList(kept), before) << "round " << round;
    }
}

TEST_P(AnyRecord, IsNotChangedThroughAnAlarmThatWasKeptAndRestored) {
    for (int round = 0; round < 50; ++round) {
        Alarm kept = alarm();
        kept.fireDate = CalendarDate();
        kept.eventDict = std::make_shared<Dictionary>(record());
        const Bytes before = writeBinaryPropertyList(*kept.eventDict);
        const Alarm restored =
            alarmFromDictionaryRepresentation(dictionaryRepresentation(kept), TimeZone());
        ASSERT_NE(restored.eventDict, nullptr);
        EXPECT_EQ(*restored.eventDict, *kept.eventDict);
        change(*restored.eventDict);
        EXPECT_NE(*restored.eventDict, *kept.eventDict) << "round " << round;
        EXPECT_EQ(writeBinaryPropertyList(*kept.eventDict), before) << "round " << round;
    }
}

TEST_P(AnyRecord, IsTheSameAfterItsAlarmWentThroughAFile) {
    for (int round = 0; round < 100; ++round) {
        const Alarm original = alarm();
        const auto file =
            readBinaryPropertyList(writeBinaryPropertyList(dictionaryRepresentation(original)));
        ASSERT_TRUE(file && file->dictionary());
        const Alarm read =
            alarmFromDictionaryRepresentation(*file->dictionary(), zone("Asia/Tokyo"));

        const bool hasEvent = original.fireDate && original.eventDict;
        const bool hasReminder = hasEvent && original.reminderDict;
        EXPECT_EQ(read.fireDate, original.fireDate);
        ASSERT_EQ(read.eventDict != nullptr, hasEvent) << "round " << round;
        ASSERT_EQ(read.reminderDict.has_value(), hasReminder) << "round " << round;
        EXPECT_TRUE(!hasEvent || *read.eventDict == *original.eventDict) << "round " << round;
        EXPECT_TRUE(!hasReminder || read.reminderDict == original.reminderDict)
            << "round " << round;
        EXPECT_EQ(read.fireDay, 0);
        EXPECT_FALSE(read.carryover || read.isHeader());
    }
}

INSTANTIATE_TEST_SUITE_P(Seed, AnyRecord, testing::Range<std::uint32_t>(1, 6),
                         testing::PrintToStringParamName());

} // namespace
} // namespace plenzo
