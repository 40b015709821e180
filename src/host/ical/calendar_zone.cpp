#include "host/ical/calendar_zone.h"

#include <algorithm>

namespace plenzo {

namespace {

const cctz::civil_second epoch(1970, 1, 1);

std::int64_t offsetAt(const EmbeddedZone& zone, std::int64_t unixSeconds) {
    const auto next = std::upper_bound(zone.changes.begin(), zone.changes.end(), unixSeconds,
                                       [](std::int64_t at, const EmbeddedZone::Change& change) {
                                           return at < change.atUnixSeconds;
                                       });
    return next == zone.changes.begin() ? zone.firstOffsetSeconds : std::prev(next)->offsetSeconds;
}

// Both a gap and a repetition end at the change plus the larger of its two offsets, and until there
// the offset before the change is the right one.
std::int64_t offsetOfLocal(const EmbeddedZone& zone, std::int64_t localSeconds) {
    std::int64_t offset = zone.firstOffsetSeconds;
    for (const EmbeddedZone::Change& change : zone.changes) {
        if (localSeconds < change.atUnixSeconds + std::max(offset, change.offsetSeconds)) {
            break;
        }
        offset = change.offsetSeconds;
    }
    return offset;
}

} // namespace

std::int64_t unixSecondsOf(SystemSeconds instant) {
    return instant.time_since_epoch().count();
}

SystemSeconds instantFromUnixSeconds(std::int64_t unixSeconds) {
    return SystemSeconds(cctz::seconds(unixSeconds));
}

CalendarZone::CalendarZone() : m_zone(cctz::utc_time_zone()) {}
CalendarZone::CalendarZone(cctz::time_zone zone) : m_zone(zone) {}
CalendarZone::CalendarZone(std::shared_ptr<const EmbeddedZone> zone) : m_zone(std::move(zone)) {}

SystemSeconds CalendarZone::instantOf(const cctz::civil_second& local) const {
    if (const auto* zone = std::get_if<cctz::time_zone>(&m_zone)) {
        return zone->lookup(local).pre;
    }
    const EmbeddedZone& zone = *std::get<1>(m_zone);
    const std::int64_t localSeconds = local - epoch;
    return instantFromUnixSeconds(localSeconds - offsetOfLocal(zone, localSeconds));
}

cctz::civil_second CalendarZone::localOf(SystemSeconds instant) const {
    if (const auto* zone = std::get_if<cctz::time_zone>(&m_zone)) {
        return cctz::convert(instant, *zone);
    }
    const std::int64_t unixSeconds = unixSecondsOf(instant);
    return epoch + (unixSeconds + offsetAt(*std::get<1>(m_zone), unixSeconds));
}

} // namespace plenzo
