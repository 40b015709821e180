#pragma once

#include <string>

namespace plenzo {

/// The name of the system's time zone as "Europe/Berlin"; empty when nobody knows it.
std::string systemZoneName();

} // namespace plenzo
