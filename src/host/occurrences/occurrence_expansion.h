#pragma once

#include "host/ical/recurrence_rule.h"
#include "host/occurrences/series.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace plenzo {

/// The coming days: from the local midnight of today to a midnight later.
struct ExpansionWindow {
    SystemSeconds now;
    SystemSeconds from;
    SystemSeconds to;
    CalendarZone systemZone;
};

/// Whether both are of the same days, at whatever moment of them.
bool areSameDays(const ExpansionWindow& one, const ExpansionWindow& other);

/// The window of `days` days that begins at the last midnight before `now` in the zone.
ExpansionWindow expansionWindow(SystemSeconds now, int days, const CalendarZone& systemZone);

/// One instance of an item. The item describes it and outlives it.
struct Occurrence {
    const CalendarItem* item = nullptr;
    std::optional<CalendarTime> identity; // its start by the series, before any override moved it
    std::optional<CalendarTime> start;    // nothing for a to-do without dates
    std::optional<CalendarTime> end;      // exclusive; of a to-do its due time
    bool isRecurring = false;

    /// The time that places it: the start of an event, the due time of a to-do or its start.
    const std::optional<CalendarTime>& anchor() const;
};

/// How far beyond the window occurrences are looked for.
struct ExpansionReach {
    std::int64_t beforeSeconds = 0;
    std::int64_t afterSeconds = 0;
};

/// The occurrences of the series that touch the window or its reach, and some around them, by their
/// start in ascending order; cancelled ones are left out. An override, and the one occurrence of an
/// item that does not recur, is there wherever it lies.
std::vector<Occurrence> occurrencesOf(const Series& series, const ExpansionWindow& window,
                                      const ExpansionReach& reach, ExpansionBudget& budget);

} // namespace plenzo
