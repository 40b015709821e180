#pragma once

#include "host/occurrences/occurrence_expansion.h"
#include "propertylist/array.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace plenzo {

/// One moment at which an alarm of an occurrence goes off: an alarm that repeats has several.
struct AlarmMoment {
    const AlarmDefinition* definition = nullptr;
    int repetition = 0; // 0 is the first
    SystemSeconds at;
};

/// The moments of the occurrence's alarms in the order of their definitions. Relative ones need a
/// time to count from: an occurrence without dates has none.
std::vector<AlarmMoment> alarmMomentsOf(const Occurrence& occurrence,
                                        const CalendarZone& systemZone);

/// The moments as reminder entries of an occurrence with that uid, whose date is at
/// `occurrenceDate`: relative triggers count in seconds from there.
Array reminderEntries(const std::vector<AlarmMoment>& moments, SystemSeconds occurrenceDate,
                      std::string_view occurrenceUid);

/// How far before and after an occurrence its relative alarms may go off, at most 400 days.
ExpansionReach reachOfAlarms(const std::vector<AlarmDefinition>& alarms);

} // namespace plenzo
