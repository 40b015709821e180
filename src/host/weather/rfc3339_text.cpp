#include "host/weather/rfc3339_text.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace plenzo {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Whether the text looks like the pattern, in which a 0 is any digit.
bool hasShape(std::string_view text, std::string_view pattern) {
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                      [](char character, char wanted) {
                          return wanted == '0' ? isDigit(character) : character == wanted;
                      });
}

/// What follows the seconds without their fraction, or nothing when that has no digits.
std::string_view offsetIn(std::string_view text) {
    if (!text.starts_with('.')) {
        return text;
    }
    const std::size_t end = std::min(text.find_first_not_of("0123456789", 1), text.size());
    return end > 1 ? text.substr(end) : std::string_view();
}

int numberAt(std::string_view text, std::size_t offset, std::size_t length) {
    int number = 0;
    for (const char digit : text.substr(offset, length)) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

} // namespace

std::optional<SystemSeconds> instantFromRfc3339(std::string_view text) {
    constexpr std::string_view clockShape = "0000-00-00T00:00:00";
    std::string upper(text.substr(0, clockShape.size()));
    std::replace(upper.begin(), upper.end(), 't', 'T');
    if (!hasShape(upper, clockShape)) {
        return std::nullopt;
    }
    std::string offset(offsetIn(text.substr(clockShape.size())));
    std::replace(offset.begin(), offset.end(), 'z', 'Z');
    if (offset != "Z" && !hasShape(offset, "+00:00") && !hasShape(offset, "-00:00")) {
        return std::nullopt;
    }
    SystemSeconds instant;
    return cctz::parse("%Y-%m-%dT%H:%M:%S%Ez", upper + offset, cctz::utc_time_zone(), &instant)
               ? std::optional(instant)
               : std::nullopt;
}

std::optional<cctz::civil_day> dayFromRfc3339(std::string_view text) {
    if (!hasShape(text, "0000-00-00")) {
        return std::nullopt;
    }
    const int month = numberAt(text, 5, 2);
    const int day = numberAt(text, 8, 2);
    const cctz::civil_day result(numberAt(text, 0, 4), month, day);
    return result.month() == month && result.day() == day ? std::optional(result) : std::nullopt;
}

} // namespace plenzo
