#pragma once

#include <iosfwd>
#include <string>

namespace plenzo {

/// Writes every problem of the configuration file and of the calendars and the weather that it
/// names, a line each, or one line that there is none. True when there is none. An empty path is
/// what holds without a configuration.
bool checkConfiguration(const std::string& path, std::ostream& output);

} // namespace plenzo
