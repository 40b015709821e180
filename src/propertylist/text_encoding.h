#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace plenzo {

bool isAscii(std::string_view text);

/// What is not UTF-8 becomes U+FFFD, one for each maximal part that could have begun a character
/// (Unicode 15, section 3.9).
std::u16string utf16FromUtf8(std::string_view text);

/// A surrogate without its partner becomes U+FFFD.
std::string utf8FromUtf16(std::u16string_view text);

/// Likewise; an odd byte at the end is ignored.
std::string utf8FromUtf16BigEndian(std::span<const std::byte> bytes);

} // namespace plenzo
