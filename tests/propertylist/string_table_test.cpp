#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"
#include "propertylist/string_table.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {
namespace {

using namespace std::string_view_literals;
using Strings = std::map<std::string, std::string>;

StringTable tableOf(std::string_view text) {
    return StringTable::fromBytes(std::as_bytes(std::span(text)));
}

Strings strings(std::string_view text) {
    const StringTable table = tableOf(text);
    return Strings(table.begin(), table.end());
}

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

TEST(AStringTable, HasTheEntriesOfItsFile) {
    const Strings expected{{"Today", "Heute"}, {"%1$@ at %2$@", "%1$@ um %2$@"}, {"bare.key", "b"}};
    EXPECT_EQ(strings("/* Days */\n\"Today\" = \"Heute\"; // a comment\n\n"
                      "\"%1$@ at %2$@\"=\"%1$@ um %2$@\";bare.key = b;"),
              expected);
    EXPECT_EQ(strings("\"a\" /* between */ = /* \"x\"; */ \"b\" ;"), (Strings{{"a", "b"}}));
    EXPECT_EQ(strings("\"a\" = \"1\";\r\n\"a\" = \"2\";\r\n"), (Strings{{"a", "2"}}));
    EXPECT_EQ(strings("\"two\nlines\" = \"// no comment /* here\";"),
              (Strings{{"two\nlines", "// no comment /* here"}}));
    EXPECT_EQ(strings("\"empty\" = \"\";"), (Strings{{"empty", ""}}));
    EXPECT_EQ(strings(""), Strings{});
}

TEST(AStringTable, FindsItsTexts) {
    const StringTable table = tableOf("\"a\" = \"1\"; \"empty\" = \"\";");
    EXPECT_EQ(table.string("a"), "1");
    EXPECT_EQ(table.string("empty"), "");
    EXPECT_EQ(table.string("A"), std::nullopt);
}

TEST(AStringTable, ReadsEscapes) {
    EXPECT_EQ(strings(R"("q" = "\"\\\'\n\t\x"; )").at("q"), "\"\\'\n\tx");
    EXPECT_EQ(strings(R"("u" = "\U00e9\U20AC"; )").at("u"), "é€");
    EXPECT_EQ(strings(R"("u" = "\Ud83d\Ude00!"; )").at("u"), "😀!") << "two halves";
    EXPECT_EQ(strings(R"("u" = "\Ud83dx"; )").at("u"), "\uFFFDx") << "one half alone";
    EXPECT_EQ(strings(R"("o" = "\101\0411"; )").at("o"), "A!1");
}

TEST(AStringTable, LosesADamagedLineAlone) {
    const std::string_view damaged[] = {
        "\"a\" = \"no end",
        "\"a\" = \"no semicolon\"",
        "\"a\" \"no sign\";",
        "= \"no key\";",
        "\"a\" = ;",
        "garbage { } ;;; \xff\xfe",
        "/* a comment that is never closed",
        "\"a\" = \"\\U12\";",
        "\"a\" = \"ends in \\",
        "\"a",
        "\"",
        ";",
    };
    for (const auto line : damaged) {
        const std::string text = "\"before\" = \"1\";\n" + std::string(line) +
                                 "\n\"after\" = \"2\";\n\"last\" = \"3\";\n";
        Strings found = strings(text);
        EXPECT_EQ(found.count("before") + found.count("last"), 2U) << line;
        EXPECT_EQ(found.count("after"), 1U) << line;
        EXPECT_EQ(found.count("a"), 0U) << line;
    }
}

TEST(AStringTable, IsReadInEveryEncoding) {
    const auto text = u"\"Grüße 😀\" = \"日本\";\n"sv;
    const Strings expected{{"Grüße 😀", "日本"}};
    EXPECT_EQ(strings("\xEF\xBB\xBF\"Grüße 😀\" = \"日本\";"), expected);
    EXPECT_EQ(strings("\xFE\xFF" + utf16(text, true)), expected);
    EXPECT_EQ(strings("\xFF\xFE" + utf16(text, false)), expected);
    EXPECT_EQ(strings(utf16(text, true)), expected);
    EXPECT_EQ(strings(utf16(text, false)), expected);
    EXPECT_EQ(strings("\"a\" = \"\xC3(\";"), (Strings{{"a", "\uFFFD("}}));
}

TEST(AStringTable, IsReadFromAPropertyList) {
    const auto bytes = writeBinaryPropertyList(
        Dictionary{{Key("Today"), "Heute"}, {Key("number"), 5}, {Key("Empty"), ""}});
    const StringTable table = StringTable::fromBytes(bytes);
    EXPECT_EQ(Strings(table.begin(), table.end()), (Strings{{"Today", "Heute"}, {"Empty", ""}}));
    EXPECT_EQ(StringTable::fromBytes(writeBinaryPropertyList(Array{1})).size(), 0U);
}

TEST(AStringTable, WithManyCommentsThatNeverEndIsReadInNoTime) {
    std::string text;
    for (int line = 0; line < 200000; ++line) {
        text += "/* \"x\n";
    }
    EXPECT_EQ(strings(text + "\"a\" = \"1\";").count("a"), 1U);
}

} // namespace
} // namespace plenzo
