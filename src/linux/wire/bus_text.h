#pragma once

#include <string>
#include <string_view>

namespace plenzo {

/// Whether a bus message can carry the text as it stands: UTF-8 (RFC 3629) without NUL, and without
/// the noncharacters (U+FFFE, U+FDD0 and their like), which the bus library refuses to read.
[[nodiscard]] bool isBusText(std::string_view text);

/// The text with U+FFFD in place of everything that a bus message cannot carry: one for each NUL,
/// each noncharacter and each ill-formed sequence.
[[nodiscard]] std::string busText(std::string_view text);

} // namespace plenzo
