#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace plenzo {

/// A format of a string table with its places filled: "%@" takes the next text, "%2$@" the second
/// one, "%%" is a percent sign. A place without a text is empty; anything else stays as it stands.
[[nodiscard]] std::string filledFormat(std::string_view format,
                                       std::initializer_list<std::string_view> texts);

} // namespace plenzo
