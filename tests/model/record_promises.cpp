#include "model/record_promises.h"

#include "model/alarm_order.h"
#include "model/occurrence_text.h"
#include "model/reminder.h"
#include "propertylist/binary_property_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

namespace plenzo {

namespace {

/// Each alarm is of an entry, none is twice, and they are in the order of the entries.
void expectInOrderOf(const Array* reminders, const std::vector<Alarm>& alarms) {
    const Array none;
    const Array& entries = reminders != nullptr ? *reminders : none;
    const Value* next = entries.begin();
    for (const Alarm& alarm : alarms) {
        next = std::find(next, entries.end(), Value(alarm.reminderDict.value()));
        ASSERT_NE(next, entries.end());
        ++next;
    }
}

void expectKeptByReminder(const Dictionary& record) {
    const Reminder reminder = reminderFromDictionary(record);
    EXPECT_EQ(reminder.title.has_value(), record.stringForKey(keys::title).has_value());
    EXPECT_EQ(reminder.absoluteTime.has_value(), record.dateForKey(keys::absoluteTime).has_value());
    EXPECT_EQ(reminder.recipients.has_value(), record.arrayForKey(keys::recipients) != nullptr);
}

bool hasReadableDate(const Dictionary& record, const Key& key) {
    const auto date = record.dateForKey(key);
    return date && Instant(*date).isReadable();
}

} // namespace

void RecordPromises::expectKept(const Dictionary& record) const {
    expectKeptByAlarms(std::make_shared<Dictionary>(record));
    expectKeptByDates(record);
    expectKeptByReminder(record);
}

void RecordPromises::expectKeptByAlarms(const EventDict& record) const {
    for (const std::optional<Instant> issueTime :
         {std::optional<Instant>(), std::optional(m_context.now - 86400)}) {
        for (const auto asked : {ProximityAlarms::Exclude, ProximityAlarms::IncludeAll}) {
            const auto alarms = alarmsForEventDict(record, issueTime, asked, m_context);
            expectInOrderOf(record->arrayForKey(keys::rem), alarms);
            for (const Alarm& alarm : alarms) {
                expectToCome(alarm, issueTime, asked);
            }
        }
    }
    for (const Alarm& alarm :
         alarmsForEventDict(record, std::nullopt, ProximityAlarms::IncludeAll, m_context)) {
        EXPECT_TRUE(std::is_eq(compare(alarm, alarm, m_titles)));
        EXPECT_TRUE(std::is_eq(compareFireDate(alarm, alarm, m_titles)));
        expectToBeKeptInFiles(alarm);
    }
}

void RecordPromises::expectToCome(const Alarm& alarm, std::optional<Instant> issueTime,
                                  ProximityAlarms asked) const {
    const bool isByPlace =
        asked == ProximityAlarms::IncludeAll && alarm.reminderType() == ReminderType::Proximity;
    EXPECT_NE(alarm.reminderType(), ReminderType::NoAction);
    EXPECT_GE(alarm.fireDay, 0);
    ASSERT_TRUE(alarm.fireDate || isByPlace);
    if (alarm.fireDate) {
        const Instant fireDate = alarm.fireDate->instant();
        EXPECT_TRUE(isByPlace || fireDate >= issueTime.value_or(m_context.now));
        EXPECT_TRUE(issueTime || fireDate <= m_context.now + alarmHorizonSeconds);
    }
}

void RecordPromises::expectToBeKeptInFiles(const Alarm& alarm) const {
    const auto file =
        readBinaryPropertyList(writeBinaryPropertyList(dictionaryRepresentation(alarm)));
    ASSERT_TRUE(file && file->dictionary());
    const Alarm read = alarmFromDictionaryRepresentation(*file->dictionary(), m_context.systemZone);
    EXPECT_EQ(read.fireDate, alarm.fireDate);
    EXPECT_EQ(read.reminderDict.has_value(), alarm.fireDate.has_value());
}

void RecordPromises::expectKeptByDates(const Dictionary& record) const {
    const auto date = eventDateInLocalTime(record, CarryForward::No, m_context);
    EXPECT_EQ(date.has_value(),
              hasReadableDate(record, keys::date) || hasReadableDate(record, keys::completionDate));
    const auto carried = eventDateInLocalTime(record, CarryForward::Yes, m_context);
    ASSERT_EQ(carried.has_value(), date.has_value());
    if (carried && *carried != *date) {
        EXPECT_LT(date->instant(), m_context.now);
        EXPECT_LT(std::abs(carried->instant() - m_context.now), 86400);
    }
    Alarm row;
    row.eventDict = std::make_shared<Dictionary>(record);
    const std::string range = dateRangeToString(row, m_context, "en_US");
    EXPECT_FALSE(range.empty());
    EXPECT_LT(range.size(), 150U);
}

} // namespace plenzo
