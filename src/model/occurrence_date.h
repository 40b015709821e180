#pragma once

#include "dates/calendar_date.h"
#include "dates/instant.h"
#include "dates/time_zone.h"
#include "propertylist/dictionary.h"

#include <optional>

namespace plenzo {

/// The present moment and the system's zone, as of which occurrences are dated and alarms computed.
struct AlarmContext {
    Instant now;
    TimeZone systemZone;
};

enum class CarryForward { No, Yes };

/// The occurrence's date in the system's zone: "completionDate" when present, else "date". An
/// all-day item is local midnight of its day, a floating one keeps its wall clock. Carried forward,
/// an undone item with "carry" whose date has passed moves to today at its own time of day. Nothing
/// for an undated item.
[[nodiscard]] std::optional<CalendarDate> eventDateInLocalTime(const Dictionary& eventDict,
                                                               CarryForward carryForward,
                                                               const AlarmContext& context);

/// What the date of an occurrence is read from: the values under these keys, null where absent.
struct OccurrenceDateValues {
    const Value* completionDate;
    const Value* date;
    const Value* allDay;
    const Value* floating;
    const Value* carry;
};

/// The same of values that are already at hand.
[[nodiscard]] std::optional<CalendarDate> eventDateInLocalTime(const OccurrenceDateValues& values,
                                                               CarryForward carryForward,
                                                               const AlarmContext& context);

/// The moment that a record's value stands for. Nothing for what is no date, and for one without
/// calendar fields (infinite, NaN, absurdly far), which counts as absent.
[[nodiscard]] std::optional<Instant> readableInstant(const Value* value);

} // namespace plenzo
