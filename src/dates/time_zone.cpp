#include "dates/time_zone.h"

#include "dates/zone_rules.h"

namespace plenzo {

TimeZone::TimeZone() : TimeZone(universal()) {}

TimeZone TimeZone::universal() {
    static const ZoneRules rules{"Universal", cctz::utc_time_zone(), true};
    return TimeZone(rules);
}

TimeZone TimeZone::gmt() {
    static const ZoneRules rules{"GMT", cctz::utc_time_zone(), true};
    return TimeZone(rules);
}

std::optional<TimeZone> TimeZone::named(std::string_view name) {
    if (name == universal().name()) {
        return universal();
    }
    if (name == gmt().name()) {
        return gmt();
    }
    const ZoneRules* rules = findZoneRules(name);
    return rules != nullptr ? std::optional(TimeZone(*rules)) : std::nullopt;
}

const std::string& TimeZone::name() const {
    return m_rules->name;
}

bool TimeZone::isUniversal() const {
    return m_rules->isUniversal;
}

bool TimeZone::isEquivalentTo(const TimeZone& other, Instant onDate) const {
    return offsetSeconds(onDate) == other.offsetSeconds(onDate);
}

std::int64_t TimeZone::offsetSeconds(Instant date) const {
    return m_rules->zone.lookup(wholeSecond(date)).offset;
}

std::string TimeZone::abbreviation(Instant date) const {
    if (*this == gmt()) {
        return name();
    }
    return m_rules->zone.lookup(wholeSecond(date)).abbr;
}

} // namespace plenzo
