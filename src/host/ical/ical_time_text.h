#pragma once

#include "host/ical/calendar_time.h"

#include <string>

namespace plenzo {

/// "20261224", a DATE value.
std::string icalDate(cctz::civil_day day);

/// "20261224T183000", a DATE-TIME value of a wall clock.
std::string icalLocalTime(const cctz::civil_second& time);

/// "20261224T173000Z", a DATE-TIME value in UTC.
std::string icalUniversalTime(SystemSeconds instant);

} // namespace plenzo
