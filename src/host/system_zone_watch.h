#pragma once

#include "host/ical/system_zone.h"
#include "host/store/path_watch.h"

#include <functional>
#include <optional>
#include <string>

namespace plenzo {

/// Notices that the system has another time zone.
class SystemZoneWatch {
public:
    explicit SystemZoneWatch(const std::string& link = "/etc/localtime",
                             std::function<std::string()> zoneName = systemZoneName);

    /// Becomes readable when there may be another zone.
    [[nodiscard]] int descriptor() const { return m_link.descriptor(); }

    /// The name of the zone, as "Europe/Berlin", when it is another than before and known.
    std::optional<std::string> readChange();

private:
    PathWatch m_link;
    std::function<std::string()> m_zoneName;
    std::string m_name;
};

} // namespace plenzo
