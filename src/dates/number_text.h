#pragma once

#include <cstdint>
#include <string>

namespace plenzo {

/// With the digits and the grouping of the locale (an ICU or BCP 47 name such as "de_DE").
[[nodiscard]] std::string stringFromInteger(std::int64_t number, const std::string& locale);

} // namespace plenzo
