#pragma once

#include <string_view>

namespace plenzo {

/// Whether the text is a URI of RFC 3986: a scheme, a hierarchical part, optionally a query and a
/// fragment, of the characters and percent-encodings allowed in each. It checks the grammar alone.
[[nodiscard]] bool isValidURI(std::string_view text);

} // namespace plenzo
