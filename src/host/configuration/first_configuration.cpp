#include "host/configuration/first_configuration.h"

#include <toml++/toml.h>

#include <sstream>

namespace plenzo {

std::string firstConfiguration(const Configuration& current) {
    std::ostringstream text;
    text << "# The configuration of plenzohost. plenzohost.toml(5) describes it;\n"
            "# `plenzohost check` says what is wrong in it.\n";
    for (const ConfiguredCalendar& calendar : current.calendars) {
        text << "\n[[calendar]]\npath = " << toml::value<std::string>(calendar.path) << '\n';
    }
    if (current.calendars.empty()) {
        text << "\n# [[calendar]]\n# path = \"~/calendars\"\n";
    }
    return text.str();
}

} // namespace plenzo
