#pragma once

#include "host/calendar.h"
#include "host/day_pieces.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <string>

namespace plenzo {

/// What the occurrences of one series have in common in their records.
struct SeriesContext {
    const Calendar& calendar;
    std::string repeatText;
};

/// The identity of an occurrence in every run: the calendar's, the item's and the day's, with the
/// time of day in UTC where there is one. URL-safe.
std::string occurrenceUid(const Occurrence& occurrence, const Calendar& calendar);

/// The event dictionary of one day of an event. The reminders belong to the first day.
Dictionary eventRecord(const Occurrence& occurrence, const DayPiece& piece,
                       const SeriesContext& context, Array reminders);

/// The event dictionary of a to-do.
Dictionary toDoRecord(const Occurrence& occurrence, const SeriesContext& context, Array reminders);

} // namespace plenzo
