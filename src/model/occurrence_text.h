#pragma once

#include "model/alarm.h"
#include "model/alarm_computation.h"

#include <string>

namespace plenzo {

/// When the alarm's occurrence takes place, in full words of the locale: the start alone, with the
/// zone's abbreviation, when it ends at the moment it starts or takes one whole day; otherwise
/// "start - end", the end with the zone and without its date when it is the start's. All-day items
/// have no times and no zone.
[[nodiscard]] std::string dateRangeToString(const Alarm& alarm, const AlarmContext& context,
                                            const std::string& locale);

} // namespace plenzo
