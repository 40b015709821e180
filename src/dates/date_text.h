#pragma once

#include "dates/calendar_date.h"
#include "dates/instant.h"
#include "dates/time_zone.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// The number at the beginning of the text, after blanks, as a decimal with or without sign, point
/// and exponent; 0 when there is none. Nothing for a number that no double can hold.
[[nodiscard]] std::optional<double> leadingNumber(std::string_view text);

/// The seconds since the reference date with six decimals, such as "600000000.250000".
[[nodiscard]] std::string networkString(Instant date);

/// The date at as many seconds since the reference date as the text's leading number says.
[[nodiscard]] std::optional<Instant> dateWithNetworkString(std::string_view text);

/// The date as seconds since the reference date, to the nearest whole number, a colon and the name
/// of its zone: "600000000:Europe/Berlin".
[[nodiscard]] std::string archiveToString(const CalendarDate& date);

/// The inverse of archiveToString. The zone of an unknown name is `systemZone`. Nothing for a text
/// without a colon and for a date that is not readable.
[[nodiscard]] std::optional<CalendarDate> unarchiveFromString(std::string_view text,
                                                              const TimeZone& systemZone);

/// In UTC with milliseconds, such as "2024-02-29T23:59:59.250Z" (RFC 3339). Empty for a year that
/// the standard cannot write: it has 0000 to 9999.
[[nodiscard]] std::string rfc3339String(Instant date);

} // namespace plenzo
