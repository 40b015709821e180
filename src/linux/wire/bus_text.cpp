#include "linux/wire/bus_text.h"

#include <algorithm>
#include <cstdint>

namespace plenzo {

namespace {

struct Sequence {
    std::size_t length;
    bool canBeCarried;
};

/// What may follow a lead byte: only the second byte's range depends on it.
struct Continuation {
    std::size_t count;
    std::uint8_t secondLowest;
    std::uint8_t secondHighest;
};

constexpr std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

/// Table 3-7 of the Unicode standard. No continuation at all for a byte that begins no sequence.
constexpr Continuation continuationAfter(std::uint8_t lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return {2, std::uint8_t(lead == 0xE0 ? 0xA0 : 0x80),
                std::uint8_t(lead == 0xED ? 0x9F : 0xBF)};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return {3, std::uint8_t(lead == 0xF0 ? 0x90 : 0x80),
                std::uint8_t(lead == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

constexpr bool isNoncharacter(char32_t character) {
    return (character & 0xFFFE) == 0xFFFE || (character >= 0xFDD0 && character <= 0xFDEF);
}

/// The first character of a text that is not empty, or as much of it as there is.
Sequence firstSequence(std::string_view text) {
    const std::uint8_t lead = byteAt(text, 0);
    if (lead < 0x80) {
        return {1, lead != 0};
    }
    const auto [count, lowest, highest] = continuationAfter(lead);
    if (count == 0) {
        return {1, false};
    }
    char32_t character = lead & (0x3FU >> count);
    for (std::size_t index = 1; index <= count; ++index) {
        const std::uint8_t least = index == 1 ? lowest : 0x80;
        const std::uint8_t most = index == 1 ? highest : 0xBF;
        if (index == text.size() || byteAt(text, index) < least || byteAt(text, index) > most) {
            return {index, false};
        }
        character = (character << 6) | (byteAt(text, index) & 0x3FU);
    }
    return {count + 1, !isNoncharacter(character)};
}

/// Without an early way out, so that it is done many bytes at a time.
bool isAsciiWithoutNul(std::string_view text) {
    unsigned others = 0;
    for (const char character : text) {
        others += static_cast<signed char>(character) <= 0 ? 1U : 0U;
    }
    return others == 0;
}

} // namespace

bool isBusText(std::string_view text) {
    if (isAsciiWithoutNul(text)) {
        return true;
    }
    while (!text.empty()) {
        const Sequence sequence = firstSequence(text);
        if (!sequence.canBeCarried) {
            return false;
        }
        text.remove_prefix(sequence.length);
    }
    return true;
}

std::string busText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Sequence sequence = firstSequence(text);
        result += sequence.canBeCarried ? text.substr(0, sequence.length) : "\uFFFD";
        text.remove_prefix(sequence.length);
    }
    return result;
}

} // namespace plenzo
