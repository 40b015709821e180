#pragma once

#include "model/alarm.h"
#include "model/occurrence_date.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace plenzo {

/// Alarms further ahead than this are left for later, unless an issue time is given.
inline constexpr double alarmHorizonSeconds = 14.0 * 86400.0;

enum class ProximityAlarms { Exclude, IncludeAll };

/// The alarms of the occurrence that are still to fire, in the order of "rem". With an issue time,
/// those that fire at or after it, however far ahead; otherwise those of the coming 14 days. A null
/// dictionary has none.
[[nodiscard]] std::vector<Alarm> alarmsForEventDict(const EventDict& eventDict,
                                                    std::optional<Instant> issueTime,
                                                    ProximityAlarms proximityAlarms,
                                                    const AlarmContext& context);

/// A reminder entry that is still to fire: what its alarm adds to the record it is of.
struct UpcomingReminder {
    /// In the system's zone. Nothing for a proximity alarm of an undated item.
    std::optional<Instant> fireDate;
    /// As in Alarm.
    std::int64_t fireDay = 0;
    /// Points into the record.
    const Dictionary* reminderDict = nullptr;
};

/// What alarmsForEventDict makes its alarms of, added to what is there.
void appendUpcomingReminders(const Dictionary& eventDict, std::optional<Instant> issueTime,
                             ProximityAlarms proximityAlarms, const AlarmContext& context,
                             std::vector<UpcomingReminder>& reminders);

} // namespace plenzo
