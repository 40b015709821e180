#pragma once

#include "host/calendar_zone.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

enum class HostMode { Serve, Dump };

/// What the command line asks for.
struct HostOptions {
    std::vector<std::string> paths;
    int days = 30;
    std::optional<SystemSeconds> fixedNow;
    CalendarZone zone;
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
