#include "host/ical/system_zone.h"

#include "host/ical/zone_table.h"

#include <unicode/timezone.h>

#include <memory>

namespace plenzo {

std::string systemZoneName() {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    if (!zone) {
        return {};
    }
    icu::UnicodeString id;
    std::string name;
    zone->getID(id).toUTF8String(name);
    return systemZoneNamed(name) ? name : std::string();
}

} // namespace plenzo
