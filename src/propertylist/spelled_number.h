#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

namespace plenzo {

/// The number that a text spells: the whole text, but for ASCII white space around it, is a decimal
/// number with or without sign, fraction and exponent that a double can hold. An integer of 64 bits
/// comes back exact, signed where it fits; `monostate` when the text spells no number.
std::variant<std::monostate, std::int64_t, std::uint64_t, double>
spelledNumber(std::string_view text);

} // namespace plenzo
