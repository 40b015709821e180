#pragma once

#include "host/ical/calendar.h"
#include "host/records/day_pieces.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// What the occurrences of one series have in common in their records.
struct SeriesContext {
    const Calendar& calendar;
    std::string repeatText;
};

/// The identity of an occurrence in every run: the calendar's, the item's and the day's, with the
/// time of day in UTC where there is one. URL-safe.
std::string occurrenceUid(const Occurrence& occurrence, const Calendar& calendar);

/// The item's part of that identity.
std::string itemIdentifier(const CalendarItem& item);

/// The day's part of that identity, and back again: the form and the instant of it. A text that is
/// none gives nothing.
std::string identityText(const CalendarTime& time);
std::optional<CalendarTime> identityFromText(std::string_view text);

/// The event dictionary of one day of an event. The reminders belong to the first day.
Dictionary eventRecord(const Occurrence& occurrence, const DayPiece& piece,
                       const SeriesContext& context, Array reminders);

/// The event dictionary of a to-do.
Dictionary toDoRecord(const Occurrence& occurrence, const SeriesContext& context, Array reminders);

} // namespace plenzo
