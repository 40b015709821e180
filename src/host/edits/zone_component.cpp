#include "host/edits/zone_component.h"

#include "host/ical/zone_table.h"

#include <cctz/time_zone.h>
#include <unicode/vtzone.h>

#include <memory>

namespace plenzo {

namespace {

constexpr double millisecondsPerSecond = 1000;
constexpr cctz::seconds twentyYears{20LL * 366 * 86'400};
constexpr cctz::seconds aWeek{7 * 86'400};

double icuTime(SystemSeconds instant) {
    return static_cast<double>(unixSecondsOf(instant)) * millisecondsPerSecond;
}

bool isSameAt(const icu::TimeZone& zone, const cctz::time_zone& ofSystem, SystemSeconds instant) {
    std::int32_t raw = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    zone.getOffset(icuTime(instant), 0, raw, saving, status);
    const double offset = ofSystem.lookup(instant).offset * millisecondsPerSecond;
    return U_SUCCESS(status) != 0 && static_cast<double>(raw) + saving == offset;
}

/// ICU brings a database of its own, which may be older than the system's.
bool isAsInSystem(const icu::TimeZone& zone, const std::string& name, SystemSeconds from) {
    const auto ofSystem = systemZoneNamed(name);
    bool isSame = ofSystem.has_value();
    for (SystemSeconds at = from; isSame && at < from + twentyYears; at += aWeek) {
        isSame = isSameAt(zone, *ofSystem, at);
    }
    return isSame;
}

} // namespace

std::string zoneComponent(const std::string& zoneName, SystemSeconds from) {
    const std::unique_ptr<icu::VTimeZone> zone(
        icu::VTimeZone::createVTimeZoneByID(icu::UnicodeString::fromUTF8(zoneName)));
    if (!zone || !isAsInSystem(*zone, zoneName, from)) {
        return {};
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    zone->write(icuTime(from), text, status);
    std::string component;
    return U_SUCCESS(status) != 0 ? text.toUTF8String(component) : component;
}

} // namespace plenzo
