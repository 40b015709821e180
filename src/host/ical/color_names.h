#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// The colour 0xRRGGBB of a CSS3 colour name, in any case, as COLOR of RFC 7986 has it, or of
/// "#RRGGBB" or "#RRGGBBAA"; nothing for any other text.
std::optional<std::uint32_t> colorFromText(std::string_view text);

/// One of twelve well-separated colours, always the same for the same name.
std::uint32_t colorForName(std::string_view name);

} // namespace plenzo
