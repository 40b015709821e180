#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"
#include "propertylist/property_list_file.h"
#include "propertylist/random_values.h"

#include <gmock/gmock.h>

#include <string>

namespace plenzo {
namespace {

using namespace std::string_literals;

TEST(AWrittenPropertyList, IsTheFormatByteForByte) {
    const std::string expected = "bplist00"
                                 "\x52Hi"
                                 "\x55title"
                                 "\xD1\x02\x01" // object 0: of the text objects 1 and 2, the key
                                 "\x11\x08\x0B" // where the objects begin
                                 "\0\0\0\0\0\0\x01\x01"
                                 "\0\0\0\0\0\0\0\x03"
                                 "\0\0\0\0\0\0\0\0"
                                 "\0\0\0\0\0\0\0\x14"s;
    EXPECT_EQ(writeFile(Dictionary{{"title", "Hi"}}), expected);
}

TEST(AWrittenPropertyList, HasEachNumberInItsSmallestForm) {
    const std::pair<Value, std::string> rows[] = {
        {0, "\x10\0"s},
        {255, "\x10\xFF"s},
        {256, "\x11\x01\0"s},
        {65536, "\x12\0\x01\0\0"s},
        {std::int64_t{1} << 32, object(0x13, bigEndian(std::uint64_t{1} << 32, 8))},
        {-1, object(0x13, bigEndian(UINT64_MAX, 8))},
        {INT64_MIN, object(0x13, bigEndian(std::uint64_t{1} << 63, 8))},
        {UINT64_MAX, object(0x14, bigEndian(UINT64_MAX, 16))},
        {true, "\x09"s},
        {Date{-0.5}, "\x33\xBF\xE0\0\0\0\0\0\0"s},
        {std::string(15, 'x'), object(0x5F, "\x10\x0F").append(15, 'x')},
        {std::string(256, 'x'), object(0x5F, "\x11\x01\0"s).append(256, 'x')},
        {"\xFF"
         "a",
         "\x62\xFF\xFD\0a"s},
    };
    for (const auto& [value, bytes] : rows) {
        const std::size_t offsetSize = bytes.size() < 248 ? 1 : 2;
        EXPECT_EQ(writeFile(value), (PropertyListFile{{bytes}, offsetSize}).bytes());
    }
}

TEST(AWrittenPropertyList, HasEqualTextsAndSharedCollectionsOnce) {
    const Value shared = Dictionary{{"title", "a string that is longer than a cell"}};
    Array array;
    for (int count = 0; count < 100; ++count) {
        array.append(shared);
        array.append("a string that is longer than a cell");
        array.append("title");
        array.append(count % 2);
    }
    const std::string written = writeFile(array);
    EXPECT_LT(written.size(), 600u);
    const auto value = readFile(written);
    EXPECT_EQ(value, Value(array));
    EXPECT_EQ((*value->array())[0].dictionary()->begin(),
              (*value->array())[4].dictionary()->begin());
}

TEST(AWrittenPropertyList, HasSharedCollectionsOnceHoweverManyThereAre) {
    constexpr std::size_t count = 50'000;
    Array records;
    for (std::size_t number = 0; number < count; ++number) {
        records.append(Dictionary{{"number", number}});
    }
    Array reversed;
    for (std::size_t number = count; number-- > 0;) {
        reversed.append(records[number]);
    }
    const std::size_t size = writeFile(records).size();
    const std::string written = writeFile(Array{Value(records), Value(reversed)});
    EXPECT_LT(written.size(), size + 4 * count + 100);
    const auto value = readFile(written);
    ASSERT_TRUE(value && value->array() && value->array()->size() == 2u);
    const Array& first = *(*value->array())[0].array();
    const Array& second = *(*value->array())[1].array();
    EXPECT_TRUE(first == records);
    for (std::size_t number = 0; number < count; ++number) {
        ASSERT_EQ(first[number].sharedContent(), second[count - 1 - number].sharedContent());
    }
}

TEST(AWrittenPropertyList, MayHaveTheSameTextAsKeyAndAsValue) {
    const std::string text(5'000, 'x');
    const Value value = Array{Dictionary{{Key(text), text}}, text};
    const std::string written = writeFile(value);
    EXPECT_LT(written.size(), 6'000u);
    EXPECT_EQ(readFile(written), value);
}

TEST(AWrittenPropertyList, HasEqualTextsOnceWhateverTheirLength) {
    constexpr int count = 20'000;
    for (std::size_t length = 1; length <= 8; ++length) {
        Array texts;
        for (int number = 0; number < count; ++number) {
            texts.append(std::string(length, 'x') + std::to_string(100'000 + number));
        }
        const std::size_t size = writeFile(texts).size();
        Array twice = texts;
        for (const Value& text : texts) {
            twice.append(text);
        }
        // But for one in thousands.
        EXPECT_LT(writeFile(twice).size(), size + 4 * count + size / 100) << length;
    }
}

TEST(AWrittenPropertyList, HasASharedTextOnceHoweverFarApartItsPlacesAre) {
    constexpr int count = 300'000;
    const Value text = std::string(1'000, 'x');
    Array array{text};
    for (int number = 0; number < count; ++number)
        array.append(std::to_string(number));
    array.append(text);
    const std::string written = writeFile(array);
    const std::size_t first = written.find(*text.string());
    EXPECT_NE(first, std::string::npos);
    EXPECT_EQ(written.find(*text.string(), first + 1), std::string::npos);
    EXPECT_TRUE(readFile(written) == Value(array));
}

TEST(AWrittenPropertyList, ReadsBackAtEverySizeOfReferencesAndOffsets) {
    for (int count : {254, 255, 256, 257, 65534, 65535, 65536, 65537}) {
        Array array;
        for (int number = 0; number < count; ++number)
            array.append(std::to_string(number));
        const auto value = readFile(writeFile(array));
        ASSERT_TRUE(value);
        EXPECT_TRUE(*value == Value(array)) << count;
    }
    for (std::size_t length : {200u, 240u, 65'480u, 65'520u}) {
        const std::string text(length, 'x');
        EXPECT_EQ(readFile(writeFile(text))->string(), text);
    }
}

/// One with so many entries, each an array of so many small numbers.
Value wideDictionary(std::size_t entryCount, std::size_t width) {
    Dictionary dictionary;
    for (std::size_t entry = 0; entry < entryCount; ++entry) {
        Array numbers;
        for (std::size_t number = 0; number < width; ++number) {
            numbers.append((entry + number) % 7);
        }
        dictionary.set(Key("key " + std::to_string(entry)), std::move(numbers));
    }
    return dictionary;
}

TEST(AWrittenPropertyList, ReadsBackWhenItHasFewObjectsAndManyReferences) {
    const std::pair<std::size_t, std::size_t> sizes[] = {
        {1, 14}, {1, 15}, {15, 255}, {20, 256}, {100, 300}, {130, 1}, {300, 300}, {1, 70'000}};
    for (const auto& [entryCount, width] : sizes) {
        const Value value = Array{wideDictionary(entryCount, width), "last"};
        const std::string written = writeFile(value);
        EXPECT_TRUE(readFile(written) == value) << entryCount << ", " << width;
        const std::size_t referenceSize = entryCount < 120 ? 1 : 2;
        EXPECT_LT(written.size(), entryCount * (referenceSize * width + 30) + 100);
    }
}

TEST(AWrittenPropertyList, ReadsBackWhenItsRecordsAreOfVeryDifferentSizes) {
    constexpr int count = 4'000;
    for (const bool firstAreLong : {true, false}) {
        Array records;
        for (int number = 0; number < count; ++number) {
            const bool isLong = (number < count / 16) == firstAreLong;
            records.append(std::string(isLong ? 2'000 : 1, 'x') + std::to_string(number));
        }
        EXPECT_TRUE(readFile(writeFile(records)) == Value(records)) << firstAreLong;
    }
}

TEST(AWrittenPropertyList, LeavesOutWhatTheFormatLacks) {
    const Value value = Dictionary{{keys::color, Color{1, 2, 3, 4}},
                                   {keys::title, "Dinner"},
                                   {keys::rem, Array{Value(), 1, Color{}, Array{Value()}}}};
    const Value expected = Dictionary{{keys::title, "Dinner"}, {keys::rem, Array{1, Array{}}}};
    EXPECT_EQ(readFile(writeFile(value)), expected);
    EXPECT_TRUE(writeFile(Value()).empty());
    EXPECT_TRUE(writeFile(Color{}).empty());
}

Value nest(int depth) {
    Value value = "core";
    for (int level = 0; level < depth; ++level)
        value = Array{value};
    return value;
}

TEST(AWrittenPropertyList, NestsNoDeeperThanItsReaderGoes) {
    EXPECT_EQ(readFile(writeFile(nest(512))), nest(512));
    EXPECT_TRUE(writeFile(nest(513)).empty());
    EXPECT_TRUE(writeFile(nest(1'000'000)).empty());

    // A shared part counts from where it lies deepest.
    const Value part = nest(300);
    Value deep = part;
    for (int level = 0; level < 211; ++level)
        deep = Array{deep};
    EXPECT_FALSE(writeFile(Array{part, deep}).empty());
    EXPECT_TRUE(writeFile(Array{Value(Array{part, deep})}).empty());
    EXPECT_TRUE(writeFile(Array{Value(Array{deep, part})}).empty());
}

TEST(AWrittenPropertyList, UnfoldsNoFurtherThanItsReaderGoes) {
    Value value = "core";
    for (int level = 0; level < 100; ++level)
        value = Array{value, value};
    EXPECT_TRUE(writeFile(value).empty());
}

TEST(AWrittenPropertyList, ReadsBackAsWhatItWasWrittenFrom) {
    RandomValues random(31);
    for (int round = 0; round < 3'000; ++round) {
        const Value value = random.collection();
        ASSERT_EQ(readFile(writeFile(value)), value);
    }
}

} // namespace
} // namespace plenzo
