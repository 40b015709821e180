#pragma once

#include <cstdint>
#include <string>

namespace plenzo {

/// With the digits and the sign of the locale (an ICU or BCP 47 name such as "de_DE"), ungrouped,
/// as a number formatter without a style writes it.
[[nodiscard]] std::string stringFromInteger(std::int64_t number, const std::string& locale);

} // namespace plenzo
