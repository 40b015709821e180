#include "host/ical/zone_table.h"

#include "host/ical/embedded_zone_reader.h"
#include "host/ical/windows_zones.h"

#include <algorithm>

namespace plenzo {

namespace {

bool isZoneNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '/' || character == '_' ||
           character == '-' || character == '+';
}

bool isPlainZoneName(std::string_view name) {
    return !name.empty() && name.size() < 64 && name.front() != '/' &&
           std::all_of(name.begin(), name.end(), isZoneNameCharacter);
}

// Some programs put a path of their own before the name: "/example.org/20050126_1/Europe/Berlin".
std::optional<cctz::time_zone> systemZoneAtEndOf(std::string_view name) {
    while (name.starts_with('/')) {
        name.remove_prefix(1);
        if (const auto zone = systemZoneNamed(name)) {
            return zone;
        }
        name.remove_prefix(std::min(name.find('/'), name.size()));
    }
    return std::nullopt;
}

} // namespace

std::optional<cctz::time_zone> systemZoneNamed(std::string_view name) {
    cctz::time_zone zone;
    if (!isPlainZoneName(name) || name == "localtime" || name == "Factory" ||
        !cctz::load_time_zone(std::string(name), &zone)) {
        return std::nullopt;
    }
    return zone;
}

ZoneTable::ZoneTable(const std::vector<ComponentBlock>& components) {
    for (const ComponentBlock& block : components) {
        if (block.name == "VTIMEZONE") {
            m_unnamed.push_back(block.text);
        }
    }
}

std::optional<CalendarZone> ZoneTable::zoneNamed(std::string_view name) {
    const auto known = m_zones.find(name);
    if (known != m_zones.end()) {
        return known->second;
    }
    std::optional<CalendarZone> zone = definedZone(std::string(name));
    if (!zone) {
        m_unknownNames.emplace(name);
    }
    m_zones.emplace(name, zone);
    return zone;
}

std::optional<CalendarZone> ZoneTable::definedZone(const std::string& name) {
    if (const auto zone = systemZoneNamed(name)) {
        return CalendarZone(*zone);
    }
    if (const auto zone = systemZoneAtEndOf(name)) {
        return CalendarZone(*zone);
    }
    const std::string_view definition = definitionOf(name);
    if (!definition.empty()) {
        if (const auto zone = embeddedZoneFromText(definition)) {
            return CalendarZone(zone);
        }
    }
    const auto zone = systemZoneNamed(systemNameOfWindowsZone(name));
    return zone ? std::optional(CalendarZone(*zone)) : std::nullopt;
}

// Most files define only zones that the system knows.
std::string_view ZoneTable::definitionOf(const std::string& name) {
    for (const std::string_view text : m_unnamed) {
        m_definitions.emplace(zoneNameOfDefinition(text), text);
    }
    m_unnamed.clear();
    const auto definition = m_definitions.find(name);
    return definition == m_definitions.end() ? std::string_view() : definition->second;
}

} // namespace plenzo
