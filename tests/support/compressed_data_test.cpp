#include "support/compressed_data.h"
#include "support/fake_clock.h"
#include "support/fake_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

namespace plenzo {
namespace {

Bytes bytes(std::initializer_list<int> numbers) {
    Bytes result;
    for (const int number : numbers) {
        result.push_back(static_cast<std::byte>(number));
    }
    return result;
}

Bytes bytes(std::string_view text) {
    const auto view = std::as_bytes(std::span(text));
    return {view.begin(), view.end()};
}

Bytes randomBytes(std::size_t count) {
    std::mt19937 random(5);
    Bytes result(count);
    std::ranges::generate(result, [&random] { return static_cast<std::byte>(random()); });
    return result;
}

TEST(CompressedData, HasTheLengthAndAZlibStream) {
    EXPECT_EQ(compressedDataWithLevel(bytes("abc"), 0, 0),
              bytes({0, 0, 0, 3, 0x78, 0x01, 0x01, 3, 0, 0xFC, 0xFF, 'a', 'b', 'c', 0x02, 0x4D,
                     0x01, 0x27}));
    EXPECT_EQ(compressedData({}), bytes({0, 0, 0, 0, 0x78, 0x9C, 0x03, 0, 0, 0, 0, 0x01}));
    EXPECT_EQ(compressedDataWithLevel(bytes("abc"), 0, 3)->size(), 21U);
    EXPECT_EQ(compressedDataWithLevel(bytes("abc"), 0, 3)->at(6), std::byte{3})
        << "the length comes after the room for a header";
}

TEST(CompressedData, ClampsItsLevel) {
    const Bytes text(10000, std::byte{'x'});
    const auto atLevel = [&text](int level) { return compressedDataWithLevel(text, level, 0); };
    EXPECT_EQ(atLevel(42), atLevel(9));
    EXPECT_EQ(atLevel(-7), atLevel(0));
    EXPECT_EQ(atLevel(-1), compressedData(text));
    EXPECT_NE(atLevel(0), atLevel(9));
}

TEST(CompressedData, GivesBackWhatWentIn) {
    for (const Bytes& original :
         {Bytes(), bytes("a"), Bytes(3000000, std::byte{7}), randomBytes(100000)}) {
        for (const int level : {-1, 0, 1, 9}) {
            const auto container = compressedDataWithLevel(original, level, 0);
            ASSERT_TRUE(container);
            EXPECT_EQ(uncompressedData(*container), original) << original.size() << " at " << level;
        }
    }
}

TEST(CompressedData, IsNothingWhenItIsDamaged) {
    const Bytes original = randomBytes(300);
    const Bytes container = compressedData(original).value();
    for (std::size_t length = 0; length < container.size(); ++length) {
        EXPECT_EQ(uncompressedData(std::span(container).first(length)), std::nullopt) << length;
    }
    Bytes tooShort = container;
    tooShort[3] = std::byte{0x2B};
    EXPECT_EQ(uncompressedData(tooShort), std::nullopt) << "299 bytes promised, 300 there";
    Bytes generous = container;
    generous[0] = std::byte{0xFF};
    EXPECT_EQ(uncompressedData(generous), original) << "4 GiB promised, 300 bytes there";
    Bytes damaged = container;
    damaged.back() ^= std::byte{1};
    EXPECT_EQ(uncompressedData(damaged), std::nullopt);
}

TEST(CompressedData, ReplacesABufferOrLeavesItAlone) {
    Bytes buffer = bytes("some text");
    ASSERT_TRUE(compress(buffer));
    EXPECT_EQ(buffer, compressedData(bytes("some text")));
    ASSERT_TRUE(uncompress(buffer));
    EXPECT_EQ(buffer, bytes("some text"));
    EXPECT_FALSE(uncompress(buffer));
    EXPECT_EQ(buffer, bytes("some text"));
}

TEST(CompressedData, GoesFromAndToFiles) {
    const FakeClock clock{Instant(8.0e8)};
    FakeFiles files{clock};
    const Bytes text(5000, std::byte{'y'});
    files.contents["in"] = text;
    const auto container = compressedDataWithFile(files, "in");
    EXPECT_EQ(container, compressedDataWithLevel(text, 9, 0));
    EXPECT_EQ(compressedDataWithFile(files, "missing"), std::nullopt);
    EXPECT_TRUE(writeUncompressedDataToFile(files, *container, "out"));
    EXPECT_EQ(files.contents["out"], text);
    EXPECT_FALSE(writeUncompressedDataToFile(files, bytes("damaged"), "out"));
    EXPECT_EQ(files.contents["out"], text);
    files.isFull = true;
    EXPECT_FALSE(writeUncompressedDataToFile(files, *container, "other"));
}

} // namespace
} // namespace plenzo
