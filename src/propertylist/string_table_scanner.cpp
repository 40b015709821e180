#include "propertylist/string_table_scanner.h"

#include "propertylist/text_encoding.h"

#include <algorithm>

namespace plenzo {

namespace {

bool isBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isBareCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("_.-/").find(character) != std::string_view::npos;
}

unsigned digitValue(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

/// The character that a one-letter escape stands for; an unknown one stands for itself.
char16_t escapedCharacter(char letter) {
    static constexpr std::string_view letters = "abfnrtv";
    static constexpr std::string_view characters = "\a\b\f\n\r\t\v";
    const auto index = letters.find(letter);
    return static_cast<char16_t>(index == std::string_view::npos ? letter : characters[index]);
}

} // namespace

std::optional<StringTableScanner::Entry> StringTableScanner::next() {
    while (true) {
        skipBlanksAndComments();
        if (atEnd()) {
            return std::nullopt;
        }
        const std::size_t start = m_position;
        if (auto entry = readEntry()) {
            return entry;
        }
        m_position = start;
        skipLine();
    }
}

std::optional<StringTableScanner::Entry> StringTableScanner::readEntry() {
    Entry entry;
    const bool isComplete =
        readText(entry.key) && readCharacter('=') && readText(entry.value) && readCharacter(';');
    return isComplete ? std::optional(std::move(entry)) : std::nullopt;
}

bool StringTableScanner::readText(std::string& text) {
    skipBlanksAndComments();
    return rest().starts_with('"') ? readQuotedText(text) : readBareText(text);
}

bool StringTableScanner::readQuotedText(std::string& text) {
    for (++m_position; !atEnd(); ++m_position) {
        const char character = m_text[m_position];
        if (character == '"') {
            ++m_position;
            return true;
        }
        if (character != '\\') {
            text += character;
            continue;
        }
        // Escapes that follow each other may be the halves of one character.
        std::u16string units;
        while (rest().starts_with('\\')) {
            if (!readEscape(units)) {
                return false;
            }
        }
        text += utf8FromUtf16(units);
        --m_position;
    }
    return false;
}

bool StringTableScanner::readBareText(std::string& text) {
    const auto end = std::find_if_not(rest().begin(), rest().end(), isBareCharacter);
    text = std::string(rest().begin(), end);
    m_position += text.size();
    return !text.empty();
}

bool StringTableScanner::readEscape(std::u16string& units) {
    ++m_position;
    if (atEnd()) {
        return false;
    }
    unsigned number = 0;
    const char letter = m_text[m_position];
    if (letter == 'U') {
        ++m_position;
        const std::size_t start = m_position;
        if (!readNumber(4, 16, number) || m_position != start + 4) {
            return false;
        }
    } else if (!readNumber(3, 8, number)) {
        number = escapedCharacter(letter);
        ++m_position;
    }
    units += static_cast<char16_t>(number);
    return true;
}

bool StringTableScanner::readNumber(std::size_t mostDigits, unsigned base, unsigned& number) {
    const std::size_t start = m_position;
    while (!atEnd() && m_position < start + mostDigits && digitValue(m_text[m_position]) < base) {
        number = number * base + digitValue(m_text[m_position]);
        ++m_position;
    }
    return m_position > start;
}

bool StringTableScanner::readCharacter(char character) {
    skipBlanksAndComments();
    if (!rest().starts_with(character)) {
        return false;
    }
    ++m_position;
    return true;
}

void StringTableScanner::skipBlanksAndComments() {
    do {
        while (!atEnd() && isBlank(m_text[m_position])) {
            ++m_position;
        }
    } while (skipComment());
}

bool StringTableScanner::skipComment() {
    if (rest().starts_with("//")) {
        skipLine();
        return true;
    }
    if (!m_hasClosedComments || !rest().starts_with("/*")) {
        return false;
    }
    const auto end = m_text.find("*/", m_position + 2);
    if (end == std::string_view::npos) {
        // A damaged line, not the rest of the file. Nor need anyone look for the end again.
        m_hasClosedComments = false;
        return false;
    }
    m_position = end + 2;
    return true;
}

void StringTableScanner::skipLine() {
    const auto end = m_text.find_first_of("\n\r", m_position);
    m_position = end == std::string_view::npos ? m_text.size() : end + 1;
}

} // namespace plenzo
