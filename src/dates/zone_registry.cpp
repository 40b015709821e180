#include "dates/zone_rules.h"

#include <unicode/timezone.h>

#include <algorithm>
#include <map>
#include <memory>

namespace plenzo {

namespace {

constexpr std::size_t longestNameLength = 64;
/// Names that are in no list of zones may be of newer zones, so they are tried, but not for ever:
/// the failures are kept.
constexpr int mostUnlistedNames = 1000;

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isNameCharacter(char character) {
    const char letter = lowerCase(character);
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '/' ||
           letter == '_' || letter == '-' || letter == '+';
}

/// A name is a path below the folder of the zone data: it must not lead out of there.
bool canBeZoneName(std::string_view name) {
    return !name.empty() && name.size() <= longestNameLength && name.front() != '/' &&
           std::all_of(name.begin(), name.end(), isNameCharacter);
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lowerCase(a) == lowerCase(b); });
}

bool isListedName(const std::string& name) {
    const std::unique_ptr<icu::TimeZone> zone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    return *zone != icu::TimeZone::getUnknown();
}

/// Whether the name may be looked up in the zone data without collecting failures for ever.
bool mayTry(const std::string& name) {
    static int unlistedNames = 0;
    return isListedName(name) || unlistedNames++ < mostUnlistedNames;
}

/// Null when there are none.
std::unique_ptr<const ZoneRules> loadZoneRules(const std::string& name) {
    const bool isUniversal = equalIgnoringCase(name, "universal") || equalIgnoringCase(name, "utc");
    if (isUniversal || equalIgnoringCase(name, "gmt")) {
        return std::make_unique<const ZoneRules>(
            ZoneRules{name, cctz::utc_time_zone(), isUniversal});
    }
    cctz::time_zone zone;
    if (!cctz::load_time_zone(name, &zone)) {
        return nullptr;
    }
    return std::make_unique<const ZoneRules>(ZoneRules{name, zone, false});
}

} // namespace

const ZoneRules* findZoneRules(std::string_view name) {
    static std::map<std::string, std::unique_ptr<const ZoneRules>, std::less<>> zones;
    if (const auto known = zones.find(name); known != zones.end()) {
        return known->second.get();
    }
    const std::string key(name.substr(0, longestNameLength + 1));
    if (!canBeZoneName(key) || !mayTry(key)) {
        return nullptr;
    }
    return zones.emplace(key, loadZoneRules(key)).first->second.get();
}

} // namespace plenzo
