#pragma once

#include "dates/calendar_date.h"
#include "dates/instant.h"
#include "dates/time_zone.h"
#include "model/alarm.h"

#include <optional>
#include <vector>

namespace plenzo {

/// The present moment and the system's zone, as of which alarms are computed.
struct AlarmContext {
    Instant now;
    TimeZone systemZone;
};

/// Alarms further ahead than this are left for later, unless an issue time is given.
inline constexpr double alarmHorizonSeconds = 14.0 * 86400.0;

enum class CarryForward { No, Yes };
enum class ProximityAlarms { Exclude, IncludeAll };

/// The occurrence's date in the system's zone: "completionDate" when present, else "date". An
/// all-day item is local midnight of its day, a floating one keeps its wall clock. Carried forward,
/// an undone item with "carry" whose date has passed moves to today at its own time of day. Nothing
/// for an undated item.
[[nodiscard]] std::optional<CalendarDate> eventDateInLocalTime(const Dictionary& eventDict,
                                                               CarryForward carryForward,
                                                               const AlarmContext& context);

/// The alarms of the occurrence that are still to fire, in the order of "rem". With an issue time,
/// those that fire at or after it, however far ahead; otherwise those of the coming 14 days. A null
/// dictionary has none.
[[nodiscard]] std::vector<Alarm> alarmsForEventDict(const EventDict& eventDict,
                                                    std::optional<Instant> issueTime,
                                                    ProximityAlarms proximityAlarms,
                                                    const AlarmContext& context);

/// The same, added to the alarms that are there.
void appendAlarmsForEventDict(const EventDict& eventDict, std::optional<Instant> issueTime,
                              ProximityAlarms proximityAlarms, const AlarmContext& context,
                              std::vector<Alarm>& alarms);

} // namespace plenzo
