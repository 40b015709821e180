#pragma once

#include <string>
#include <vector>

namespace plenzo {

/// What happened, across several fakes, in order: "post PlenzoAlarm Launched", "open link".
using Journal = std::vector<std::string>;

} // namespace plenzo
