#pragma once

#include "host/ical/calendar_zone.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

enum class HostMode { Serve, Dump, Check };

/// What the command line asks for.
struct HostOptions {
    std::vector<std::string> paths;       // instead of the calendars of the configuration
    std::string configurationPath;        // empty for the usual one, if it is there
    std::vector<std::string> commandUrls; // for the host that runs, or else for this one
    int days = 30;
    std::optional<SystemSeconds> fixedNow;
    CalendarZone zone;
    std::string zoneName; // empty when nobody knows it
    bool followsSystemZone = false;
    HostMode mode = HostMode::Serve;
};

/// The options, or the status to end with: help and version are printed, an error is named on
/// standard error.
struct CommandLine {
    std::optional<HostOptions> options;
    int exitStatus = 0;
};

CommandLine readCommandLine(int argumentCount, const char* const* arguments);

} // namespace plenzo
