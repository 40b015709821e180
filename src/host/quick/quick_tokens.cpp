#include "host/quick/quick_tokens.h"

#include "propertylist/text_encoding.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <charconv>

namespace plenzo {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n\v\f";
constexpr std::string_view opening = "([{\"'<";
constexpr std::string_view closing = ",.;:!?)]}\"'>";
constexpr std::string_view dashes[] = {"-", "\u2013", "\u2014"};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Letter by letter, so that "Straße" keeps its length.
std::string foldedText(std::string_view text) {
    std::u16string units = utf16FromUtf8(text);
    for (char16_t& unit : units) {
        unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    }
    return utf8FromUtf16(units);
}

bool startsWithCapital(std::string_view text) {
    constexpr std::size_t longestCharacter = 4;
    const std::u16string units = utf16FromUtf8(text.substr(0, longestCharacter));
    return !units.empty() && (u_isupper(units.front()) != 0 || u_istitle(units.front()) != 0);
}

bool canBeCutOff(std::string_view folded) {
    return isWord(folded, WordRole::Meridiem) || isWord(folded, WordRole::OrdinalEnding) ||
           isWord(folded, WordRole::Unit) || isWord(folded, WordRole::ClockWord);
}

bool canBeEndOfRange(std::string_view text) {
    const std::string folded = foldedText(text);
    return !text.empty() && (isDigit(text.front()) || isWord(folded, WordRole::Weekday) ||
                             isWord(folded, WordRole::DoubtfulWeekday));
}

bool isIsoDate(std::string_view text) {
    return text.size() >= 8 && text[4] == '-' && digitsOf(text.substr(0, 4)) &&
           std::count(text.begin(), text.end(), '-') == 2;
}

/// Cuts one chunk after the other.
class Tokenizer {
public:
    QuickTokens take() { return std::move(m_result); }

    void add(std::string_view chunk) {
        m_result.chunks.push_back(chunk);
        std::string_view core = trimmed(chunk);
        if (core.size() > 1 && core.front() == '@') {
            push("@");
            core.remove_prefix(1);
        }
        addCore(core);
        closeChunk(chunk, core);
    }

private:
    static std::string_view trimmed(std::string_view chunk) {
        const std::size_t begin = chunk.find_first_not_of(opening);
        if (begin == std::string_view::npos) {
            return chunk;
        }
        const std::size_t end = chunk.find_last_not_of(closing);
        return end == std::string_view::npos || end < begin ? chunk
                                                            : chunk.substr(begin, end + 1 - begin);
    }

    void addCore(std::string_view core) {
        for (const std::string_view dash : dashes) {
            const std::size_t at = core.find(dash);
            if (at == 0 && core.size() == dash.size()) {
                push("-");
                return;
            }
            if (at != std::string_view::npos && !isIsoDate(core) &&
                canBeEndOfRange(core.substr(0, at)) &&
                canBeEndOfRange(core.substr(at + dash.size()))) {
                addWord(core.substr(0, at));
                push("-");
                addWord(core.substr(at + dash.size()));
                return;
            }
        }
        addWord(core);
    }

    void addWord(std::string_view word) {
        const std::size_t end = std::min(word.find_first_not_of("0123456789:."), word.size());
        const std::string ending = foldedText(word.substr(end));
        if (end > 0 && isDigit(word.front()) && canBeCutOff(ending)) {
            push(word.substr(0, end));
            push(word.substr(end));
        } else {
            push(word);
        }
    }

    void push(std::string_view word) {
        QuickToken token;
        token.folded = foldedText(word);
        token.roles = rolesOf(token.folded);
        token.chunk = m_result.chunks.size() - 1;
        token.isCapitalized = startsWithCapital(word);
        m_result.tokens.push_back(std::move(token));
    }

    void closeChunk(std::string_view chunk, std::string_view core) {
        const auto after = static_cast<std::size_t>(core.data() + core.size() - chunk.data());
        const char following = after < chunk.size() ? chunk[after] : ' ';
        m_result.tokens.back().hasColon = following == ':';
        m_result.tokens.back().hasPeriod = following == '.';
    }

    QuickTokens m_result;
};

} // namespace

QuickTokens quickTokensOf(std::string_view text) {
    Tokenizer tokenizer;
    std::size_t begin = text.find_first_not_of(whiteSpace);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(whiteSpace, begin), text.size());
        tokenizer.add(text.substr(begin, end - begin));
        begin = text.find_first_not_of(whiteSpace, end);
    }
    return tokenizer.take();
}

std::optional<int> digitsOf(std::string_view text) {
    constexpr std::size_t longest = 6;
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = !text.empty() && isDigit(text.front()) && text.size() <= longest &&
                          error == std::errc() && stop == end;
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace plenzo
