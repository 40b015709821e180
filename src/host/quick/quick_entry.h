#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/calendar_time.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// Which number of "3/12" is the day.
enum class DayMonthOrder : std::uint8_t { DayFirst, MonthFirst };

/// The present in which a quick entry is read: "tomorrow" is the day after `now` in `zone`.
struct QuickEntryContext {
    SystemSeconds now;
    CalendarZone zone;
    DayMonthOrder order = DayMonthOrder::DayFirst;
};

/// What a line that somebody typed asks to be made. An event has both a start and an end, which is
/// the first moment (or day) after it. A to-do has its due moment as `end`, a start only where the
/// text gives one or where it recurs, and neither when it has no date.
struct QuickEntry {
    ItemKind kind = ItemKind::Event;
    std::string title; // never empty when the text has a visible character
    std::string location;
    std::optional<CalendarTime> start;
    std::optional<CalendarTime> end;
    std::string recurrenceRule; // the value of an RRULE, or empty
};

/// Reads a line as "Lunch with Ana tomorrow at 12:30" or "Zahnarzt morgen um 9 Uhr": the first
/// date, time, recurrence and place that it finds, everything else being the title. An event
/// without a date is today and all day, one with a time alone the next time that it is that time.
///
/// What is decided where a text is ambiguous: an hour without minutes or "am" is in the afternoon
/// from 1 to 6 and in the morning from 7 to 11, unless a meal or an evening word in the text or the
/// present says otherwise; with minutes it is the 24-hour clock. "next friday" is the Friday of
/// next week, weeks beginning on Monday. Midnight ends the day that it is named with. A month
/// counts with a day alone ("May flowers" is a title); "Monday Night Football" is a name; so are
/// "Midnight Mass" and "Weekly Report", because a capitalized or leading word is no time there.
/// A day that does not exist stays in the title. An hour that the clocks skip is the one after it.
///
/// Takes time proportional to the text, whatever it holds.
QuickEntry readQuickEntry(std::string_view text, const QuickEntryContext& context);

} // namespace plenzo
