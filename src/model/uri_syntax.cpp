#include "model/uri_syntax.h"

#include <algorithm>
#include <cstddef>

namespace plenzo {

namespace {

// Names in quotes are those of the grammar in RFC 3986, appendix A.

bool isAlpha(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'z';
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
    const char lower = static_cast<char>(character | 0x20);
    return isDigit(character) || (lower >= 'a' && lower <= 'f');
}

bool isOneOf(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

constexpr std::string_view subDelimiters = "!$&'()*+,;=";

bool isUnreserved(char character) {
    return isAlpha(character) || isDigit(character) || isOneOf("-._~", character);
}

/// Nothing but "unreserved", "sub-delims", "pct-encoded" and the further characters.
bool consistsOf(std::string_view text, std::string_view furtherCharacters) {
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        if (character == '%') {
            if (position + 2 >= text.size() || !isHexDigit(text[position + 1]) ||
                !isHexDigit(text[position + 2])) {
                return false;
            }
            position += 2;
        } else if (!isUnreserved(character) && !isOneOf(subDelimiters, character) &&
                   !isOneOf(furtherCharacters, character)) {
            return false;
        }
    }
    return true;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isAlpha(text.front()) && std::ranges::all_of(text, [](char character) {
        return isAlpha(character) || isDigit(character) || isOneOf("+-.", character);
    });
}

/// What stands before the separator; it and the separator are taken off the text. The whole text
/// when there is none.
std::string_view takeUntil(std::string_view& text, char separator) {
    const std::string_view head = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), head.size() + 1));
    return head;
}

/// "dec-octet" four times.
bool isIPv4Address(std::string_view text) {
    int count = 0;
    while (count < 4 && !text.empty()) {
        const bool isLast = text.find('.') == std::string_view::npos;
        const std::string_view octet = takeUntil(text, '.');
        const bool hasLeadingZero = octet.size() > 1 && octet.front() == '0';
        if (octet.empty() || octet.size() > 3 || hasLeadingZero ||
            !std::ranges::all_of(octet, isDigit) || (octet.size() == 3 && octet > "255")) {
            return false;
        }
        ++count;
        if (isLast) {
            break;
        }
    }
    return count == 4 && text.empty();
}

/// How many 16-bit groups the text spells, the last two perhaps as an IPv4 address; -1 when it is
/// not groups.
int groupCount(std::string_view text) {
    int count = 0;
    while (!text.empty()) {
        const bool isLast = text.find(':') == std::string_view::npos;
        const std::string_view group = takeUntil(text, ':');
        const bool isAddress = isLast && isIPv4Address(group);
        const bool isGroup =
            !group.empty() && group.size() <= 4 && std::ranges::all_of(group, isHexDigit);
        if ((!isAddress && !isGroup) || (!isLast && text.empty())) {
            return -1;
        }
        count += isAddress ? 2 : 1;
    }
    return count;
}

bool isIPv6Address(std::string_view text) {
    const auto gap = text.find("::");
    if (gap == std::string_view::npos) {
        return groupCount(text) == 8;
    }
    const std::string_view before = text.substr(0, gap);
    const int countBefore = before.find('.') == std::string_view::npos ? groupCount(before) : -1;
    const int countAfter = groupCount(text.substr(gap + 2));
    return countBefore >= 0 && countAfter >= 0 && countBefore + countAfter <= 7;
}

/// "IPvFuture", without its first letter.
bool isFutureAddress(std::string_view text) {
    const std::string_view version = takeUntil(text, '.');
    return !version.empty() && std::ranges::all_of(version, isHexDigit) && !text.empty() &&
           text.find('%') == std::string_view::npos && consistsOf(text, ":");
}

bool isHost(std::string_view text) {
    if (!text.starts_with('[')) {
        return consistsOf(text, "");
    }
    if (!text.ends_with(']')) {
        return false;
    }
    text = text.substr(1, text.size() - 2);
    if (text.starts_with('v') || text.starts_with('V')) {
        return isFutureAddress(text.substr(1));
    }
    return isIPv6Address(text);
}

bool isAuthority(std::string_view text) {
    const auto at = text.find('@');
    if (at != std::string_view::npos) {
        if (!consistsOf(text.substr(0, at), ":")) {
            return false;
        }
        text.remove_prefix(at + 1);
    }
    const auto colon = text.rfind(':');
    const bool hasPort = colon != std::string_view::npos && !text.ends_with(']');
    if (!hasPort) {
        return isHost(text);
    }
    return isHost(text.substr(0, colon)) && std::ranges::all_of(text.substr(colon + 1), isDigit);
}

bool isHierarchicalPart(std::string_view text) {
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const auto slash = std::min(text.find('/'), text.size());
        return isAuthority(text.substr(0, slash)) && consistsOf(text.substr(slash), ":@/");
    }
    return consistsOf(text, ":@/");
}

} // namespace

bool isValidURI(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || !isScheme(text.substr(0, colon))) {
        return false;
    }
    text.remove_prefix(colon + 1);
    const std::string_view beforeFragment = text.substr(0, text.find('#'));
    if (beforeFragment.size() < text.size() &&
        !consistsOf(text.substr(beforeFragment.size() + 1), ":@/?")) {
        return false;
    }
    const std::string_view hierarchicalPart = beforeFragment.substr(0, beforeFragment.find('?'));
    return isHierarchicalPart(hierarchicalPart) &&
           (hierarchicalPart.size() == beforeFragment.size() ||
            consistsOf(beforeFragment.substr(hierarchicalPart.size() + 1), ":@/?"));
}

} // namespace plenzo
