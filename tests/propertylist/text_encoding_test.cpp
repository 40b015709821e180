#include "propertylist/text_encoding.h"

#include <gmock/gmock.h>

#include <span>
#include <string>

namespace plenzo {
namespace {

TEST(TextEncoding, PutsAReplacementForEachBrokenPart) {
    const std::pair<std::string, std::u16string> rows[] = {
        {"", u""},
        {"aß€😀", u"aß€😀"},
        {"\x7F\xC2\x80\xDF\xBF", u"\u007F\u0080\u07FF"},
        {"\xEF\xBF\xBF\xF4\x8F\xBF\xBF", u"\uFFFF\U0010FFFF"},
        {"\x80", u"\uFFFD"},                     // a follower alone
        {"\xC0\xAF", u"\uFFFD\uFFFD"},           // an overlong form
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"}, // another
        {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // a surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond the last character
        {"\xF0\x9F\x98", u"\uFFFD"},                       // cut short
        {"\xE2\x82"
         "a",
         u"\uFFFDa"},
        {"\xE2\xE2\x82\xAC", u"\uFFFD€"},
        {"\xFF\xFE", u"\uFFFD\uFFFD"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(utf16FromUtf8(text), expected) << testing::PrintToString(text);
}

TEST(TextEncoding, BringsEveryCharacterThereAndBack) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        std::string bytes;
        auto appendUnit = [&](char32_t unit) {
            bytes += static_cast<char>(unit >> 8);
            bytes += static_cast<char>(unit & 0xFF);
        };
        if (character >= 0x10000) {
            appendUnit(0xD800 + ((character - 0x10000) >> 10));
            appendUnit(0xDC00 + (character & 0x3FF));
        } else {
            appendUnit(character);
        }
        const std::string text = utf8FromUtf16BigEndian(std::as_bytes(std::span(bytes)));
        std::string again;
        for (char16_t unit : utf16FromUtf8(text)) {
            again += static_cast<char>(unit >> 8);
            again += static_cast<char>(unit & 0xFF);
        }
        const bool isSurrogate = character >= 0xD800 && character < 0xE000;
        ASSERT_EQ(again, isSurrogate ? "\xFF\xFD" : bytes) << static_cast<unsigned>(character);
    }
}

TEST(TextEncoding, KnowsAsciiFromTheRest) {
    std::string text(40, 'x');
    EXPECT_TRUE(isAscii(text));
    EXPECT_TRUE(isAscii(""));
    for (char& character : text) {
        character = '\x80';
        EXPECT_FALSE(isAscii(text));
        character = '\x7F';
    }
}

} // namespace
} // namespace plenzo
