#include "host/edits/content_lines.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::size_t longestLineOctets = 75;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view whiteSpace = " \t\r\n";

char capital(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

std::string inCapitals(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), capital);
    return result;
}

std::string trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(whiteSpace);
    if (begin == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(begin, text.find_last_not_of(whiteSpace) - begin + 1));
}

/// The line without its folds, its ending and a byte order mark.
std::string unfolded(std::string_view bytes) {
    if (bytes.starts_with(byteOrderMark)) {
        bytes.remove_prefix(byteOrderMark.size());
    }
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t newline = bytes.find('\n');
        std::string_view piece = bytes.substr(0, newline);
        bytes.remove_prefix(newline == std::string_view::npos ? bytes.size() : newline + 1);
        if (newline != std::string_view::npos && piece.ends_with('\r')) {
            piece.remove_suffix(1);
        }
        result += piece;
        bytes.remove_prefix(bytes.empty() ? 0 : 1); // the fold's space
    }
    return result;
}

/// The place of the colon before the value: quotation marks hide others.
std::size_t colonIn(std::string_view content) {
    bool isQuoted = false;
    for (std::size_t index = 0; index < content.size(); ++index) {
        if (content[index] == '"') {
            isQuoted = !isQuoted;
        } else if (content[index] == ':' && !isQuoted) {
            return index;
        }
    }
    return content.find(':');
}

std::string nameIn(std::string_view bytes) {
    const std::string_view firstBytes = bytes.substr(0, bytes.find('\n'));
    const bool isWhole = firstBytes.find_first_of(":;") != std::string_view::npos &&
                         !firstBytes.starts_with(byteOrderMark);
    const std::string content = isWhole ? std::string(firstBytes) : unfolded(bytes);
    const std::size_t end = content.find_first_of(":;");
    return end == std::string::npos ? std::string() : inCapitals(content.substr(0, end));
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// How many bytes fit into a line without cutting a character; at least one.
std::size_t fittingLength(std::string_view content, std::size_t limit) {
    if (content.size() <= limit) {
        return content.size();
    }
    std::size_t length = limit;
    while (length > 0 && limit - length < 4 && continuesCharacter(content[length])) {
        --length;
    }
    return continuesCharacter(content[length]) ? limit : length; // no UTF-8: cut anywhere
}

} // namespace

ContentLine::ContentLine(std::string bytes) : m_bytes(std::move(bytes)), m_name(nameIn(m_bytes)) {}

std::string ContentLine::content() const {
    return unfolded(m_bytes);
}

std::string ContentLine::parameters() const {
    const std::string line = content();
    const std::size_t colon = colonIn(line);
    return colon == std::string::npos || colon < m_name.size()
               ? std::string()
               : line.substr(m_name.size(), colon - m_name.size());
}

std::string ContentLine::parameter(std::string_view name) const {
    const std::string all = parameters();
    std::size_t begin = 0;
    while (begin < all.size()) { // all[begin] is a semicolon
        std::size_t end = begin + 1;
        for (bool isQuoted = false; end < all.size() && (isQuoted || all[end] != ';'); ++end) {
            isQuoted = isQuoted != (all[end] == '"');
        }
        const std::string one = all.substr(begin + 1, end - begin - 1);
        const std::size_t equals = one.find('=');
        if (equals != std::string::npos && inCapitals(one.substr(0, equals)) == name) {
            std::string value = one.substr(equals + 1);
            std::erase(value, '"');
            return value;
        }
        begin = end;
    }
    return {};
}

std::string ContentLine::value() const {
    const std::string line = content();
    const std::size_t colon = colonIn(line);
    return colon == std::string::npos ? std::string() : trimmed(line.substr(colon + 1));
}

std::string ContentLine::text() const {
    const std::string escaped = value();
    std::string result;
    for (std::size_t index = 0; index < escaped.size(); ++index) {
        const bool isEscape = escaped[index] == '\\' && index + 1 < escaped.size();
        index += isEscape ? 1 : 0;
        const bool isNewline = isEscape && capital(escaped[index]) == 'N';
        result += isNewline ? '\n' : escaped[index];
    }
    return trimmed(result);
}

bool ContentLine::isBlank() const {
    return m_bytes.find_first_not_of(whiteSpace) == std::string::npos;
}

ContentLine ContentLine::withoutByteOrderMark() const {
    const bool isMarked = m_bytes.starts_with(byteOrderMark);
    return ContentLine(isMarked ? m_bytes.substr(byteOrderMark.size()) : m_bytes);
}

ContentLine ContentLine::endedLike(const ContentLine& other) const {
    if (m_bytes.ends_with('\n')) {
        return *this;
    }
    const bool needsReturn = other.m_bytes.ends_with("\r\n") && !m_bytes.ends_with('\r');
    return ContentLine(m_bytes + (needsReturn ? "\r\n" : "\n"));
}

std::string foldedLine(std::string_view content, std::string_view lineEnding) {
    std::string result;
    std::size_t limit = longestLineOctets;
    do {
        const std::size_t length = fittingLength(content, limit);
        result += (result.empty() ? "" : " ") + std::string(content.substr(0, length));
        result += lineEnding;
        content.remove_prefix(length);
        limit = longestLineOctets - 1;
    } while (!content.empty());
    return result;
}

std::string escapedText(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '\n') {
            result += "\\n";
        } else if (character != '\r' && character != '\0') {
            const bool isSpecial = character == '\\' || character == ';' || character == ',';
            result += isSpecial ? "\\" : "";
            result += character;
        }
    }
    return result;
}

} // namespace plenzo
