#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace plenzo {

/// Identifiers that may stand in a URL as they are: only unreserved characters of RFC 3986, 2.3.
/// '~' is kept for joining parts, and '_' with two hexadecimal digits stands for any other byte.

/// The text in that alphabet, without '~'. Different texts give different results, up to the hash
/// that ends the result of a text that would be longer than 160 characters.
std::string urlSafe(std::string_view text);

/// Two identifiers joined so that the parts can be told apart again.
std::string joinedIdentifiers(std::string_view first, std::string_view second);

/// The same number for the same bytes on every machine and in every run (FNV-1a).
std::uint64_t stableHash(std::string_view bytes);

/// The stable hash as 16 hexadecimal digits.
std::string stableHashText(std::string_view bytes);

} // namespace plenzo
