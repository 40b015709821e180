#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// Finds the entries in the text of a strings file, one after the other.
class StringTableScanner {
public:
    struct Entry {
        std::string key;
        std::string value;
    };

    /// The text is UTF-8 and must outlive the scanner.
    explicit StringTableScanner(std::string_view text) : m_text(text) {}

    /// Nothing at the end of the text.
    [[nodiscard]] std::optional<Entry> next();

private:
    std::optional<Entry> readEntry();
    bool readText(std::string& text);
    bool readQuotedText(std::string& text);
    bool readBareText(std::string& text);
    bool readEscape(std::u16string& units);
    bool readNumber(std::size_t mostDigits, unsigned base, unsigned& number);
    bool readCharacter(char character);
    void skipBlanksAndComments();
    bool skipComment();
    void skipLine();

    [[nodiscard]] bool atEnd() const { return m_position >= m_text.size(); }
    [[nodiscard]] std::string_view rest() const { return m_text.substr(m_position); }

    std::string_view m_text;
    std::size_t m_position = 0;
    /// False once a comment was found to have no end.
    bool m_hasClosedComments = true;
};

} // namespace plenzo
