#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// The text with its percent-encodings (RFC 3986, 2.1) undone. Nothing when a percent sign has no
/// two hexadecimal digits after it, or when what comes out is no UTF-8.
[[nodiscard]] std::optional<std::string> replacingPercentEscapes(std::string_view text);

} // namespace plenzo
