#pragma once

#include "host/ical/calendar_item.h"
#include "host/ical/recurrence_rule.h"

#include <vector>

namespace plenzo {

/// A start that a series gives, and the value of RDATE when that gives it a length of its own.
struct SeriesStart {
    CalendarTime start;
    const ExtraDate* period = nullptr;
};

/// The recurrence set of a series (RFC 5545, 3.8.5) in and around the span, in time order: its
/// first start, wherever that lies, and what RRULE and RDATE give, without what EXDATE and EXRULE
/// take away. `first` is the series' first start; the span is on the wall clock of its zone.
std::vector<SeriesStart> seriesStarts(const CalendarItem& master, const CalendarTime& first,
                                      const CivilSpan& span, const CalendarZone& systemZone,
                                      ExpansionBudget& budget);

} // namespace plenzo
