#pragma once

#include "dates/calendar_date.h"
#include "model/event_dict.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// One reminder entry of one occurrence at one fire time. The same record is a row of the status
/// window (an occurrence on a day, without a reminder) and, with a heading's text, a heading row.
struct Alarm {
    /// When the alarm fires; of a status row the local start of its occurrence. Nothing for a
    /// proximity alarm of an undated item and for a heading.
    std::optional<CalendarDate> fireDate;
    /// Null for a heading.
    EventDict eventDict;
    /// The alarm definition out of the occurrence's "rem"; nothing for a row.
    std::optional<Dictionary> reminderDict;
    /// For an absolute alarm the whole days between the present day and the occurrence's; of a
    /// status row the index of its day; else 0.
    std::int64_t fireDay = 0;
    /// The row of an occurrence that began before the row's day.
    bool carryover = false;
    std::optional<std::string> headerString;

    [[nodiscard]] bool isHeader() const { return headerString.has_value(); }
    [[nodiscard]] const EventDict& representedObject() const { return eventDict; }

    /// Typed reading of a record that may be missing: false, 0 and nothing then.
    [[nodiscard]] bool eventBool(const Key& key) const {
        return eventDict && eventDict->boolForKey(key);
    }
    [[nodiscard]] std::int64_t eventInteger(const Key& key) const {
        return eventDict ? eventDict->integerForKey(key) : 0;
    }
    /// Empty when there is none. Points into the record.
    [[nodiscard]] std::string_view eventText(const Key& key) const {
        return eventDict ? eventDict->stringForKey(key).value_or(std::string_view())
                         : std::string_view();
    }
    /// Display when there is no reminder.
    [[nodiscard]] ReminderType reminderType() const {
        return plenzo::reminderType(reminderDict ? *reminderDict : Dictionary());
    }
    /// Empty when there is none. Points into the record.
    [[nodiscard]] std::string_view reminderText(const Key& key) const {
        return reminderDict ? reminderDict->stringForKey(key).value_or(std::string_view())
                            : std::string_view();
    }
};

/// A heading row.
[[nodiscard]] Alarm alarmHeaderFromString(std::string headerString);

/// The persisted form: "fireDate", "eventDict" and "reminderDict", up to the first that the alarm
/// does not have. The rest of the alarm is not kept.
[[nodiscard]] Dictionary dictionaryRepresentation(const Alarm& alarm);

/// The alarm of a persisted form. What is absent or of another type the alarm does not have; the
/// fire date is read in the zone.
[[nodiscard]] Alarm alarmFromDictionaryRepresentation(const Dictionary& dictionary,
                                                      const TimeZone& timeZone);

} // namespace plenzo
