#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace plenzo {

/// The seconds of "90 s", "5 min" or "2 hours", at most ten days; negative for "10 min before
/// start". Nothing for any other text.
std::optional<std::int64_t> secondsOfDurationText(std::string_view text);

} // namespace plenzo
