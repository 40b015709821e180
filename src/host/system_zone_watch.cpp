#include "host/system_zone_watch.h"

#include <utility>

namespace plenzo {

SystemZoneWatch::SystemZoneWatch(const std::string& link, std::function<std::string()> zoneName)
    : m_zoneName(std::move(zoneName)), m_name(m_zoneName()) {
    m_link.watch({link});
}

std::optional<std::string> SystemZoneWatch::readChange() {
    if (!m_link.readChanges()) {
        return std::nullopt;
    }
    std::string name = m_zoneName();
    if (name.empty() || name == m_name) {
        return std::nullopt;
    }
    m_name = std::move(name);
    return m_name;
}

} // namespace plenzo
