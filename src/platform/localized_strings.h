#pragma once

#include <string>
#include <string_view>

namespace plenzo {

/// The texts of the program in the user's language, by key.
class LocalizedStrings {
public:
    LocalizedStrings() = default;
    LocalizedStrings(const LocalizedStrings&) = delete;
    LocalizedStrings& operator=(const LocalizedStrings&) = delete;
    virtual ~LocalizedStrings() = default;

    /// Empty when there is no text for the key.
    [[nodiscard]] virtual std::string string(std::string_view key) const = 0;
};

} // namespace plenzo
