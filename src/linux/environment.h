#pragma once

#include <initializer_list>
#include <string>

namespace plenzo {

/// The variable's value; empty when it is not set.
[[nodiscard]] std::string environment(const char* variable);

/// The value of the first of these that is set and not empty; empty when none is.
[[nodiscard]] std::string firstSetInEnvironment(std::initializer_list<const char*> variables);

} // namespace plenzo
