#pragma once

#include "dates/date_components.h"
#include "dates/instant.h"
#include "dates/time_zone.h"

#include <cctz/time_zone.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// What stands behind a TimeZone: its name and the rules between absolute and civil time. For the
/// files of this folder only.
struct ZoneRules {
    std::string name;
    cctz::time_zone zone;
    bool isUniversal = false;
};

/// The rules under that name, kept for the life of the program; null when there are none.
[[nodiscard]] const ZoneRules* findZoneRules(std::string_view name);

/// The whole seconds of the instant, rounded down; of the nearest readable one.
[[nodiscard]] cctz::time_point<cctz::seconds> wholeSecond(Instant date);

/// What the wall clock of the zone shows.
[[nodiscard]] inline cctz::civil_second civilTime(Instant date, const TimeZone& timeZone) {
    return timeZone.rules().zone.lookup(wholeSecond(date)).cs;
}

/// When the wall clock of the zone shows that. A time which the clock skips is read with the
/// offset that was in force before, so it moves forward by the length of the gap; of a time that
/// comes twice the first is taken. Nothing when the year is beyond the readable range.
[[nodiscard]] std::optional<Instant> instantOf(const cctz::civil_second& time,
                                               const TimeZone& timeZone);

/// Not absurdly large: the limit is far beyond every sensible field or amount of calendar units,
/// and far from what overflows when fields are carried over. An undefined component is not
/// sensible.
[[nodiscard]] constexpr bool isSensibleComponent(std::int64_t component) {
    constexpr std::int64_t furthestComponent = 100'000'000'000'000;
    return component >= -furthestComponent && component <= furthestComponent;
}

/// The civil time of year, month, day, hour, minute and second, too large or too small ones
/// carried over into the next larger field (month 13 is January). Nothing when one of them is
/// undefined or absurdly large.
[[nodiscard]] std::optional<cctz::civil_second> normalizedTime(const DateComponents& components);

[[nodiscard]] DateFields fieldsOf(const cctz::civil_second& time);

/// 1 Sunday to 7 Saturday.
[[nodiscard]] int weekdayOf(const cctz::civil_day& day);

} // namespace plenzo
