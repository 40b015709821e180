#pragma once

#include <string>
#include <vector>

namespace plenzo {

/// What the rules of an item say in English, for a person: "every 2 weeks on Monday and Friday,
/// until 31 December 2026". Empty for no rule or one that cannot be read.
std::string repeatText(const std::vector<std::string>& rules);

} // namespace plenzo
