#include "propertylist/spelled_number.h"

#include <charconv>
#include <optional>

namespace plenzo {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

std::string_view trimmed(std::string_view text) {
    std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

template <typename Number>
std::optional<Number> wholeTextAs(std::string_view text) {
    Number number{};
    const char* end = text.data() + text.size();
    auto [stop, fault] = std::from_chars(text.data(), end, number);
    if (fault != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

} // namespace

std::variant<std::monostate, std::int64_t, std::uint64_t, double>
spelledNumber(std::string_view text) {
    std::string_view digits = trimmed(text);
    if (digits.starts_with('+')) {
        digits.remove_prefix(1);
        if (digits.starts_with('-'))
            return {};
    }
    // Words such as "infinity" are numbers to the library.
    if (digits.find_first_not_of("0123456789+-.eE") != std::string_view::npos)
        return {};
    if (auto number = wholeTextAs<std::int64_t>(digits))
        return *number;
    if (auto number = wholeTextAs<std::uint64_t>(digits))
        return *number;
    if (auto number = wholeTextAs<double>(digits))
        return *number;
    return {};
}

} // namespace plenzo
