#pragma once

#include "measurement.h"

namespace plenzo {

/// How many bytes of memory a record of usual length takes, among 100,000 that were read from a
/// file and among as many that were built one by one and share nothing.
std::vector<Figure> residentMemoryOfARecord();

} // namespace plenzo
