#include "host/ical/ical_time_text.h"

#include <array>
#include <cstdio>

namespace plenzo {

std::string icalDate(cctz::civil_day day) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02d", static_cast<int>(day.year()),
                  day.month(), day.day());
    return text.data();
}

std::string icalLocalTime(const cctz::civil_second& time) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "T%02d%02d%02d", time.hour(), time.minute(),
                  time.second());
    return icalDate(cctz::civil_day(time)) + text.data();
}

std::string icalUniversalTime(SystemSeconds instant) {
    return icalLocalTime(CalendarZone().localOf(instant)) + "Z";
}

} // namespace plenzo
