#include "host/ical/identifiers.h"

#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

constexpr std::size_t longestText = 160;
constexpr std::string_view hexadecimalDigits = "0123456789ABCDEF";

bool standsForItself(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.';
}

void appendSafe(std::string& result, char character) {
    if (standsForItself(character)) {
        result += character;
        return;
    }
    const auto byte = static_cast<unsigned char>(character);
    result += '_';
    result += hexadecimalDigits[byte >> 4U];
    result += hexadecimalDigits[byte & 15U];
}

} // namespace

std::string urlSafe(std::string_view text) {
    std::string result;
    for (const char character : text.substr(0, longestText + 1)) {
        appendSafe(result, character);
    }
    if (result.size() > longestText) {
        return result.substr(0, longestText) + "_h" + stableHashText(text);
    }
    return result;
}

std::string joinedIdentifiers(std::string_view first, std::string_view second) {
    return std::string(first) + '~' + std::string(second);
}

std::uint64_t stableHash(std::string_view bytes) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
    return hash;
}

std::string stableHashText(std::string_view bytes) {
    std::uint64_t hash = stableHash(bytes);
    std::string text(16, '0');
    for (char& digit : text) { // the last four bits first
        digit = hexadecimalDigits[hash & 15U];
        hash >>= 4U;
    }
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace plenzo
