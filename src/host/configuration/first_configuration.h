#pragma once

#include "host/configuration/configuration.h"

#include <string>

namespace plenzo {

/// A configuration file to begin with: it says what holds without one.
std::string firstConfiguration(const Configuration& current);

} // namespace plenzo
