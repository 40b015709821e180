#include "dates/zone_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace plenzo {

namespace {

constexpr std::int64_t referenceDateSince1970Seconds =
    static_cast<std::int64_t>(Instant::referenceDateSince1970Seconds);

/// Years whose every moment, in every zone, is counted in seconds without overflow; the readable
/// range ends some thousand years earlier.
constexpr std::int64_t furthestYear = 320'000;

} // namespace

cctz::time_point<cctz::seconds> wholeSecond(Instant date) {
    const double seconds = date.secondsSinceReferenceDate();
    const double readable = date.isReadable() ? std::floor(seconds)
                            : std::isnan(seconds)
                                ? 0
                                : std::copysign(Instant::furthestReadableSeconds, seconds);
    return cctz::time_point<cctz::seconds>(
        cctz::seconds(static_cast<std::int64_t>(readable) + referenceDateSince1970Seconds));
}

std::optional<Instant> instantOf(const cctz::civil_second& time, const TimeZone& timeZone) {
    if (time.year() < -furthestYear || time.year() > furthestYear) {
        return std::nullopt;
    }
    const auto moment = timeZone.rules().zone.lookup(time).pre;
    const std::int64_t seconds = moment.time_since_epoch().count() - referenceDateSince1970Seconds;
    return Instant(static_cast<double>(seconds));
}

std::optional<cctz::civil_second> normalizedTime(const DateComponents& components) {
    const std::int64_t fields[] = {components.year, components.month,  components.day,
                                   components.hour, components.minute, components.second};
    if (!std::all_of(std::begin(fields), std::end(fields), isSensibleComponent)) {
        return std::nullopt;
    }
    return cctz::civil_second(components.year, components.month, components.day, components.hour,
                              components.minute, components.second);
}

DateFields fieldsOf(const cctz::civil_second& time) {
    return {time.year(), time.month(), time.day(), time.hour(), time.minute(), time.second()};
}

int weekdayOf(const cctz::civil_day& day) {
    return (static_cast<int>(cctz::get_weekday(day)) + 1) % 7 + 1;
}

} // namespace plenzo
