#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"
#include "propertylist/property_list_file.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>

namespace plenzo {
namespace {

using namespace std::string_literals;

std::string wideInteger(std::uint64_t upper, std::uint64_t lower) {
    return object(0x14, bigEndian(upper, 8).append(bigEndian(lower, 8)));
}

TEST(ABinaryPropertyList, HoldsNumbersOfEverySize) {
    const std::pair<std::string, Value> rows[] = {
        {"\x10\xFF"s, 255},
        {"\x11\xFF\xFE"s, 65534},
        {"\x12\xFF\xFF\xFF\xFF"s, 4294967295u},
        {"\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"s, -2},
        {"\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, INT64_MAX},
        {wideInteger(0, UINT64_MAX), UINT64_MAX},
        {wideInteger(UINT64_MAX, UINT64_MAX - 4), -5},
        {"\x22\xBF\xC0\x00\x00"s, -1.5},
        {"\x23\xBF\xF8\x00\x00\x00\x00\x00\x00"s, -1.5},
        {"\x33\x41\xC8\x00\x00\x00\x00\x00\x00"s, Date{805306368}},
        {"\x08"s, false},
        {"\x09"s, true},
    };
    for (const auto& [bytes, expected] : rows) {
        const auto value = readObject(bytes);
        ASSERT_TRUE(value) << testing::PrintToString(bytes);
        EXPECT_EQ(*value, expected) << testing::PrintToString(bytes);
        EXPECT_EQ(value->type(), expected.type());
    }
}

TEST(ABinaryPropertyList, HoldsTextInAsciiAndUtf16) {
    const std::pair<std::string, std::string> rows[] = {
        {"\x50"s, ""},
        {"\x53\x00\x01\x7F"s, "\x00\x01\x7F"s},
        {textObject(std::string(300, 'x')), std::string(300, 'x')},
        {"\x61\x00\xFC"s, "ü"},
        {"\x62\xD8\x3D\xDE\xAE"s, "🚮"},
        {"\x63\xDE\xAE\xD8\x3D\x00\x61"s, "\uFFFD\uFFFDa"}, // a pair the wrong way round
        {"\x61\xD8\x3D"s, "\uFFFD"},
    };
    for (const auto& [bytes, expected] : rows) {
        const auto value = readObject(bytes);
        ASSERT_TRUE(value) << testing::PrintToString(bytes);
        EXPECT_EQ(value->string(), expected);
    }
}

TEST(ABinaryPropertyList, KeepsAbsurdDatesAsTheyStand) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(readObject("\x33\x7F\xF0\0\0\0\0\0\0"s)->date(), Date{infinity});
    EXPECT_TRUE(
        std::isnan(readObject("\x33\x7F\xF8\0\0\0\0\0\0"s)->date()->secondsSinceReferenceDate));
}

TEST(ABinaryPropertyList, GivesNothingForObjectsThatNoRecordHas) {
    const std::string objects[] = {
        "\x00"s,     // null
        "\x0F"s,     // fill
        "\x80\x01"s, // UID
        "\xC1\x00"s, // set
        "\x71\x61"s,
        "\xB0"s,
        "\xE0"s,
        "\xF0"s, // no types
        "\x20\x00"s,
        "\x21\x00\x00"s,
        "\x32\x00\x00\x00\x00"s,        // reals and dates of other sizes
        object(0x15, bigEndian(1, 32)), // integers of other sizes
        wideInteger(1, 0),              // beyond 64 bits
        wideInteger(UINT64_MAX, 1),     // below 64 bits
        "\x52\x61\xE4"s,                // no ASCII
    };
    for (const std::string& bytes : objects) {
        EXPECT_FALSE(readObject(bytes)) << testing::PrintToString(bytes);
        // Nor for the whole of which it is a part.
        EXPECT_FALSE(readFile({{arrayObject({1, 2}), "\x09", bytes}}));
    }
}

TEST(ABinaryPropertyList, HoldsArraysAndDictionaries) {
    const auto value =
        readFile({{arrayObject({1, 5, 6}), dictionaryObject({2, 3}, {4, 5}), textObject("title"),
                   textObject("of its own"), textObject("Dinner"), "\x10\x07", arrayObject({})}});
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, Value(Array{Dictionary{{"title", "Dinner"}, {"of its own", 7}}, 7, Array{}}));
    EXPECT_TRUE((*value->array())[0].dictionary()->begin()->key.isKnown());
}

TEST(ABinaryPropertyList, TakesTheLastOfARepeatedKeysValues) {
    const auto value = readFile({{dictionaryObject({1, 2, 3}, {4, 5, 4}), textObject("a"),
                                  textObject("a"), textObject("b"), "\x08", "\x09"}});
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, Value(Dictionary{{"a", true}, {"b", false}}));
}

TEST(ABinaryPropertyList, GivesNothingWhenAKeyIsNoText) {
    EXPECT_FALSE(readFile({{dictionaryObject({1}, {1}), "\x10\x01"}}));
    EXPECT_FALSE(readFile({{dictionaryObject({0}, {1}), "\x10\x01"}}));
    EXPECT_FALSE(readFile({{dictionaryObject({1}, {1}), "\x51\xE4"}}));
}

TEST(ABinaryPropertyList, MayHaveOffsetsAndReferencesOfAnySizeUpToEightBytes) {
    for (std::size_t offsetSize = 0; offsetSize <= 9; ++offsetSize) {
        for (std::size_t referenceSize = 0; referenceSize <= 9; ++referenceSize) {
            const PropertyListFile file{
                {arrayObject({1, 1}, referenceSize), "\x09"}, offsetSize, referenceSize};
            const bool isSound = offsetSize % 9 != 0 && referenceSize % 9 != 0;
            EXPECT_EQ(readFile(file),
                      isSound ? std::optional<Value>(Array{true, true}) : std::nullopt);
        }
    }
}

TEST(ABinaryPropertyList, MayHaveItsTopObjectAnywhere) {
    EXPECT_EQ(readFile({{"\x08", arrayObject({0}), "\x09"}, 1, 1, 1}), Value(Array{false}));
    EXPECT_FALSE(readFile({{"\x08", "\x09"}, 1, 1, 2}));
}

TEST(ABinaryPropertyList, SharesWhatItsFileShares) {
    const auto value = readFile({{arrayObject({1, 1, 2, 2}), arrayObject({2}),
                                  textObject("a string that is longer than a cell")}});
    ASSERT_TRUE(value);
    const Array& array = *value->array();
    EXPECT_EQ(array[0].array()->begin(), array[1].array()->begin());
    EXPECT_EQ(array[2].string()->data(), array[3].string()->data());
    EXPECT_EQ(array[2].string()->data(), (*array[0].array())[0].string()->data());
}

} // namespace
} // namespace plenzo
