#include "model/percent_escapes.h"

#include "propertylist/text_encoding.h"

#include <charconv>
#include <cstddef>

namespace plenzo {

namespace {

std::optional<char> decoded(std::string_view digits) {
    unsigned char byte = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    const bool isWhole = digits.size() == 2 && error == std::errc() && end == digits.data() + 2;
    return isWhole ? std::optional(static_cast<char>(byte)) : std::nullopt;
}

} // namespace

std::optional<std::string> replacingPercentEscapes(std::string_view text) {
    std::string result;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] != '%') {
            result += text[place];
            continue;
        }
        const auto character = decoded(text.substr(place + 1, 2));
        if (!character) {
            return std::nullopt;
        }
        result += *character;
        place += 2;
    }
    const bool isUtf8 = utf8FromUtf16(utf16FromUtf8(result)) == result;
    return isUtf8 ? std::optional(result) : std::nullopt;
}

} // namespace plenzo
