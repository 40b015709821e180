#include "propertylist/array.h"
#include "propertylist/property_list_file.h"
#include "propertylist/random_values.h"

#include <gmock/gmock.h>

#include <numeric>
#include <span>
#include <string>
#include <vector>

namespace plenzo {
namespace {

PropertyListFile soundFile() {
    return {{arrayObject({1, 2}), dictionaryObject({3}, {4}), textObject("a longer piece of text"),
             textObject("title"), "\x33" + std::string(8, '\0')}};
}

TEST(AHostilePropertyList, GivesNothingWhenCutShortAnywhere) {
    const std::string file = soundFile().bytes();
    ASSERT_TRUE(readFile(file));
    for (std::size_t length = 0; length < file.size(); ++length) {
        EXPECT_FALSE(readFile(file.substr(0, length))) << length;
        EXPECT_FALSE(readFile(file.substr(file.size() - length))) << length;
    }
}

TEST(AHostilePropertyList, GivesNothingWhenItsTrailerIsAbsurd) {
    const std::string sound = soundFile().bytes();
    const std::uint64_t tableOffset = sound.size() - 32 - 20;
    struct {
        std::size_t field;
        std::size_t size;
        std::uint64_t content;
    } const rows[] = {
        {offsetSizeField, 1, 0},
        {offsetSizeField, 1, 9},
        {offsetSizeField, 1, 255},
        {referenceSizeField, 1, 0},
        {referenceSizeField, 1, 200},
        {objectCountField, 8, 0},
        {objectCountField, 8, 6},
        {objectCountField, 8, UINT64_MAX},
        {objectCountField, 8, UINT64_MAX / 4 + 2},
        {topObjectField, 8, 5},
        {topObjectField, 8, UINT64_MAX},
        {tableOffsetField, 8, 0},
        {tableOffsetField, 8, 7},
        {tableOffsetField, 8, 8},
        {tableOffsetField, 8, tableOffset + 1},
        {tableOffsetField, 8, sound.size()},
        {tableOffsetField, 8, UINT64_MAX - 3},
    };
    for (const auto& [field, size, content] : rows) {
        std::string file = sound;
        file.replace(file.size() - field, size, bigEndian(content, size));
        EXPECT_FALSE(readFile(file)) << field << ": " << content;
    }
    EXPECT_FALSE(readFile(std::string(sound).replace(7, 1, "1")));
}

TEST(AHostilePropertyList, GivesNothingForLengthsBeyondItsEnd) {
    for (unsigned marker : {0x40u, 0x50u, 0x60u, 0xA0u, 0xD0u}) {
        for (std::uint64_t count :
             {std::uint64_t{20}, std::uint64_t{1} << 31, std::uint64_t{1} << 32,
              std::uint64_t{1} << 60, std::uint64_t{1} << 61, std::uint64_t{1} << 63,
              UINT64_MAX / 2, UINT64_MAX - 1, UINT64_MAX})
            EXPECT_FALSE(readObject(objectWithCount(marker, count, "\0\0\0"))) << marker << count;
        for (const char* badCount : {"", "\x10", "\x14", "\x1F", "\x51x", "\x22\0\0\0\1"})
            EXPECT_FALSE(readObject(object(marker + 15, badCount))) << marker;
    }
}

TEST(AHostilePropertyList, GivesNothingForReferencesToNowhere) {
    EXPECT_FALSE(readFile({{arrayObject({1})}}));
    EXPECT_FALSE(readFile({{dictionaryObject({1}, {2}), textObject("a")}}));
    EXPECT_FALSE(readFile({{arrayObject({UINT64_MAX}, 8)}, 8, 8}));
    for (std::uint64_t offset :
         {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{9}, std::uint64_t{40}, UINT64_MAX}) {
        std::string file = PropertyListFile{{"\x09"}, 8}.bytes();
        file.replace(file.size() - 40, 8, bigEndian(offset, 8));
        EXPECT_FALSE(readFile(file)) << offset;
    }
}

TEST(AHostilePropertyList, GivesNothingForLoopingReferences) {
    const std::string key = textObject("a");
    EXPECT_FALSE(readFile({{arrayObject({0})}}));
    EXPECT_FALSE(readFile({{arrayObject({0, 0})}}));
    EXPECT_FALSE(readFile({{arrayObject({1, 2}), arrayObject({2}), arrayObject({1})}}));
    EXPECT_FALSE(readFile({{dictionaryObject({1}, {0}), key}}));
    EXPECT_FALSE(readFile({{arrayObject({1}), dictionaryObject({2, 2}, {0, 0}), key}}));
}

/// Arrays in each other; the outermost is object 0, or the last one when the innermost comes first.
PropertyListFile nest(std::uint64_t depth, bool innermostFirst) {
    PropertyListFile file{{}, 4, 4, innermostFirst ? depth - 1 : 0};
    for (std::uint64_t number = 0; number < depth; ++number) {
        const bool isInnermost = number == (innermostFirst ? 0 : depth - 1);
        const std::uint64_t inner = innermostFirst ? number - 1 : number + 1;
        file.objects.push_back(isInnermost ? arrayObject({}) : arrayObject({inner}, 4));
    }
    return file;
}

TEST(AHostilePropertyList, MayNestToACertainDepthOnly) {
    for (bool innermostFirst : {false, true}) {
        EXPECT_TRUE(readFile(nest(512, innermostFirst)));
        EXPECT_FALSE(readFile(nest(513, innermostFirst)));
        EXPECT_FALSE(readFile(nest(1'000'000, innermostFirst)));
    }
}

TEST(AHostilePropertyList, MayNotHideItsDepthBehindWhatItShares) {
    // The outermost array refers to all the others, the innermost first.
    PropertyListFile file = nest(1'000, true);
    std::vector<std::uint64_t> references(1'000);
    std::iota(references.begin(), references.end(), 0u);
    file.topObject = file.objects.size();
    file.objects.push_back(arrayObject(references, 4));
    EXPECT_FALSE(readFile(file));

    file = nest(511, true);
    file.topObject = file.objects.size();
    references.resize(511);
    file.objects.push_back(arrayObject(references, 4));
    EXPECT_FALSE(readFile(file)) << "it unfolds to 130,000 arrays";
    file.objects.emplace_back(10'000, 'x'); // as it may in a file of some size
    EXPECT_TRUE(readFile(file));
}

TEST(AHostilePropertyList, GivesAValueOrNothingHoweverItIsDamaged) {
    RandomValues random(2024);
    int readCount = 0;
    for (int round = 0; round < 300; ++round) {
        const std::string sound = writeFile(random.collection());
        for (int damage = 0; damage < 60; ++damage) {
            const std::string damaged = random.damaged(sound);
            const auto value = readFile(damaged);
            if (!value)
                continue;
            ++readCount;
            // What was read can be written; it may unfold as far as the damaged file's size allows.
            const Value padded = Array{*value, Value::fromData(std::as_bytes(std::span(damaged)))};
            ASSERT_EQ(readFile(writeFile(padded)), padded);
        }
    }
    EXPECT_GT(readCount, 1'000);
}

} // namespace
} // namespace plenzo
