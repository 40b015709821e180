#pragma once

#include "host/quick/quick_words.h"

#include <string_view>
#include <vector>

namespace plenzo {

/// A quick entry cut into the runs between its white space, and those into words: "(mon 10-11am)"
/// is "(mon" and "10-11am)", and the words "mon", "10", "-", "11", "am".
struct QuickTokens {
    std::vector<std::string_view> chunks; // views into the text
    std::vector<QuickToken> tokens;
};

/// In time proportional to the text. What is no UTF-8 is kept.
QuickTokens quickTokensOf(std::string_view text);

/// A number of at most six digits and nothing else.
std::optional<int> digitsOf(std::string_view text);

} // namespace plenzo
