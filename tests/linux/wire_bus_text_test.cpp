#include "linux/wire/bus_text.h"

#include <gtest/gtest.h>

#include <string_view>

namespace plenzo {
namespace {

using namespace std::string_view_literals;

TEST(ABusText, LeavesWhatCanBeCarriedAsItStands) {
    for (const auto text : {""sv, "plain"sv, "\x7f\x01"sv, "Zoë"sv, "\u0080\u07ff\u0800\ud7fb"sv,
                            "\ue000\ufdcf\ufdf0\ufffd"sv, "\U00010000\U0010fffd"sv,
                            "a long run of plain text before the only accent: é"sv}) {
        EXPECT_TRUE(isBusText(text)) << text;
        EXPECT_EQ(busText(text), text);
    }
}

TEST(ABusText, PutsOneReplacementInPlaceOfEachThingThatCannotBeCarried) {
    struct Case {
        std::string_view text;
        std::string_view carried;
    };
    for (const auto& [text, carried] : {
             Case{"a\0b"sv, "a\uFFFDb"},
             {"\xff", "\uFFFD"},
             {"a\x80z", "a\uFFFDz"},
             {"\xc3", "\uFFFD"},                               // breaks off
             {"\xe2\x82", "\uFFFD"},                           // breaks off later
             {"\xf0\x9f\x98z", "\uFFFDz"},                     // cut in the middle of the text
             {"\xc3(", "\uFFFD("},                             // nothing of what follows is lost
             {"\xc0\xaf", "\uFFFD\uFFFD"},                     // overlong
             {"\xe0\x80\xaf", "\uFFFD\uFFFD\uFFFD"},           // overlong
             {"\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD"},           // surrogate
             {"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}, // above U+10FFFF
             {"\xf8\x88\x80\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
             {"<\xef\xbf\xbf>", "<\uFFFD>"},     // U+FFFF
             {"<\xef\xb7\x90>", "<\uFFFD>"},     // U+FDD0
             {"<\xf0\x9f\xbf\xbe>", "<\uFFFD>"}, // U+1FFFE
         }) {
        EXPECT_FALSE(isBusText(text)) << carried;
        EXPECT_EQ(busText(text), carried);
    }
}

} // namespace
} // namespace plenzo
