#pragma once

#include "host/ical/calendar_item.h"

#include <optional>
#include <vector>

namespace plenzo {

/// The items of one UID: the series, and the overrides of its instances. The items outlive it.
struct Series {
    const CalendarItem* master = nullptr; // null when there are overrides alone
    std::vector<const CalendarItem*> overrides;
};

/// Grouped by kind and UID, in the order of the UIDs. Of several items with the same UID and the
/// same recurrence id the one with the highest SEQUENCE counts, and of equal ones the last. Items
/// without a UID stand alone. Where there is no master an override that recurs itself is taken for
/// it.
std::vector<Series> seriesOf(const std::vector<const CalendarItem*>& items);
std::vector<Series> seriesOf(const std::vector<CalendarItem>& items);

/// What describes the occurrence of that identity, if there is one: an override of its own or one
/// that applies to the future, or the series. Null when it can be none of the series.
const CalendarItem* itemDescribing(const Series& series,
                                   const std::optional<CalendarTime>& identity);

} // namespace plenzo
