#pragma once

#include "host/ical/calendar_zone.h"
#include "host/ical/content_blocks.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// The zones that the times of one file can name. The system's database comes first, whose rules
/// are current; then what the file's VTIMEZONE components define; then the names that Windows uses.
class ZoneTable {
public:
    /// Keeps the VTIMEZONE blocks among `components`; each is read when a time first names it.
    explicit ZoneTable(const std::vector<ComponentBlock>& components);

    /// The zone of a TZID, or nothing when nobody knows it.
    std::optional<CalendarZone> zoneNamed(std::string_view name);

    /// The names that were asked for and not known.
    const std::set<std::string>& unknownNames() const { return m_unknownNames; }

private:
    std::optional<CalendarZone> definedZone(const std::string& name);
    std::string_view definitionOf(const std::string& name);

    std::vector<std::string_view> m_unnamed; // definitions that were not looked into yet
    std::map<std::string, std::string_view, std::less<>> m_definitions;
    std::map<std::string, std::optional<CalendarZone>, std::less<>> m_zones;
    std::set<std::string> m_unknownNames;
};

/// A zone of the system's database; nothing for a name that it has not, or that is no plain zone
/// name (a path, say).
std::optional<cctz::time_zone> systemZoneNamed(std::string_view name);

} // namespace plenzo
