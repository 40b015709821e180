#include "propertylist/text_encoding.h"

#include <cstdint>
#include <cstring>

namespace plenzo {

namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// What the first byte of a character says about the bytes that follow.
struct Lead {
    std::size_t followerCount;
    char32_t bits;
    /// The bounds of the first follower; they keep out overlong forms, surrogates and what lies
    /// beyond U+10FFFF.
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
};

/// A byte that begins no character has no followers and is the replacement itself.
Lead leadOf(unsigned char byte) {
    if (byte < 0x80)
        return {0, byte};
    if (byte < 0xC2 || byte > 0xF4)
        return {0, replacement};
    if (byte < 0xE0)
        return {1, byte & 0x1Fu};
    if (byte < 0xF0)
        return {2, byte & 0x0Fu, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    return {3, byte & 0x07u, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
}

/// Takes the first character off the text.
char32_t takeCharacter(std::string_view& text) {
    const Lead lead = leadOf(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    char32_t character = lead.bits;
    for (std::size_t number = 0; number < lead.followerCount; ++number) {
        const unsigned byte = text.empty() ? 0u : static_cast<unsigned char>(text.front());
        if (byte < (number == 0 ? lead.lowest : 0x80) || byte > (number == 0 ? lead.highest : 0xBF))
            return replacement;
        character = (character << 6) | (byte & 0x3Fu);
        text.remove_prefix(1);
    }
    return character;
}

void appendUtf16(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
}

void appendUtf8(std::string& text, char32_t character) {
    auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
    auto appendFollower = [&](unsigned shift) { append(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | (character >> 6));
        appendFollower(0);
    } else if (character < 0x10000) {
        append(0xE0 | (character >> 12));
        appendFollower(6);
        appendFollower(0);
    } else {
        append(0xF0 | (character >> 18));
        appendFollower(12);
        appendFollower(6);
        appendFollower(0);
    }
}

} // namespace

bool isAscii(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t word = 0;
    for (; text.size() >= sizeof(word); text.remove_prefix(sizeof(word))) {
        std::memcpy(&word, text.data(), sizeof(word));
        if ((word & highBits) != 0)
            return false;
    }
    word = 0;
    if (!text.empty())
        std::memcpy(&word, text.data(), text.size());
    return (word & highBits) == 0;
}

std::u16string utf16FromUtf8(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty())
        appendUtf16(result, takeCharacter(text));
    return result;
}

std::string utf8FromUtf16(std::u16string_view text) {
    std::string result;
    result.reserve(text.size() * 2);
    for (std::size_t number = 0; number < text.size(); ++number) {
        char32_t character = text[number];
        const char32_t next = number + 1 < text.size() ? text[number + 1] : 0;
        if (isHighSurrogate(character) && isLowSurrogate(next)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++number;
        } else if (isHighSurrogate(character) || isLowSurrogate(character)) {
            character = replacement;
        }
        appendUtf8(result, character);
    }
    return result;
}

std::string utf8FromUtf16BigEndian(std::span<const std::byte> bytes) {
    std::u16string text(bytes.size() / 2, u' ');
    for (std::size_t number = 0; number < text.size(); ++number) {
        text[number] = static_cast<char16_t>(std::to_integer<unsigned>(bytes[2 * number]) << 8 |
                                             std::to_integer<unsigned>(bytes[2 * number + 1]));
    }
    return utf8FromUtf16(text);
}

} // namespace plenzo
