#pragma once

#include "host/ical/calendar_time.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

enum class ItemKind : std::uint8_t { Event, ToDo };

/// What an alarm does, by its ACTION (RFC 5545, 3.8.6.1). Running a program is displayed instead:
/// the alarm is kept, and a calendar gets nothing run. Unknown actions do nothing.
enum class AlarmAction : std::uint8_t { Display, Audio, Email, None };

/// Which end of the occurrence a relative trigger counts from.
enum class TriggerBase : std::uint8_t { Start, End };

/// One VALARM. An absolute trigger, when there is one, wins over the relative one.
struct AlarmDefinition {
    std::string uid; // its own or a derived one; different for all alarms of an item
    int place = 0;   // among the VALARM parts of its component, from 0
    AlarmAction action = AlarmAction::Display;
    TriggerBase triggerBase = TriggerBase::Start;
    CalendarDuration relativeTrigger;
    std::optional<SystemSeconds> absoluteTrigger;
    int repeatCount = 0;
    CalendarDuration repeatInterval;
    std::optional<SystemSeconds> acknowledged;
    std::string soundName;
    std::vector<std::string> recipients;
};

/// One value of RDATE: a start, and for a period its end or its length.
struct ExtraDate {
    CalendarTime start;
    std::optional<CalendarTime> end;
    std::optional<CalendarDuration> duration;
};

/// The recurrence properties of a component, as they stand in the file.
struct RecurrenceProperties {
    std::vector<std::string> rules;          // RRULE
    std::vector<std::string> exceptionRules; // EXRULE of RFC 2445, still met
    std::vector<ExtraDate> extraDates;
    std::vector<CalendarTime> exceptionDates;

    bool isRecurring() const { return !rules.empty() || !extraDates.empty(); }
};

/// One VEVENT or VTODO: a whole series, or with a recurrence id the override of one instance.
/// All texts are UTF-8 with their escapes undone.
struct CalendarItem {
    ItemKind kind = ItemKind::Event;
    std::string uid;
    int sequence = 0;
    int line = 0; // of its BEGIN in the file

    std::optional<CalendarTime> start;
    std::optional<CalendarTime> end; // DTEND, or DUE of a to-do
    std::optional<CalendarDuration> duration;
    RecurrenceProperties recurrence;
    std::optional<CalendarTime> recurrenceId;
    bool appliesToFuture = false; // RANGE=THISANDFUTURE

    std::string title;
    std::string location;
    std::string notes;
    std::string url;
    std::vector<std::string> categories;
    std::vector<std::string> attendees;
    std::int64_t priority = 0;
    bool isCancelled = false;
    bool isCompleted = false;
    std::optional<SystemSeconds> completedAt;
    std::vector<AlarmDefinition> alarms;
};

/// The title for people, who take a row without one for a fault.
inline std::string shownTitle(const CalendarItem& item) {
    return item.title.empty() ? "Untitled" : item.title;
}

} // namespace plenzo
