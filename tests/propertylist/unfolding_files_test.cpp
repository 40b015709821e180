#include "propertylist/property_list_file.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

namespace plenzo {
namespace {

/// Each array holds the next one so many times.
PropertyListFile unfoldingFile(std::size_t levels, std::size_t width) {
    PropertyListFile file;
    for (std::size_t level = 1; level < levels; ++level)
        file.objects.push_back(arrayObject(std::vector<std::uint64_t>(width, level)));
    file.objects.push_back(textObject("lol"));
    return file;
}

TEST(AnUnfoldingPropertyList, MayNotUnfoldToFarMoreThanItIs) {
    EXPECT_TRUE(readFile(unfoldingFile(4, 8)));
    EXPECT_FALSE(readFile(unfoldingFile(8, 10)));
    EXPECT_FALSE(readFile(unfoldingFile(200, 2)));
    EXPECT_FALSE(readFile(unfoldingFile(200, 14)));
}

TEST(AnUnfoldingPropertyList, MayNotRepeatALongTextEndlessly) {
    PropertyListFile file{
        {arrayObject(std::vector<std::uint64_t>(1'000, 1)), textObject(std::string(50'000, 'x'))}};
    EXPECT_TRUE(readFile(file));
    file.objects[0] = arrayObject(std::vector<std::uint64_t>(20'000, 1));
    EXPECT_FALSE(readFile(file));
}

/// Many objects that all begin at the same place.
std::string overlappingFile(std::size_t objectCount, const std::string& repeated) {
    std::vector<std::uint64_t> references(objectCount);
    std::iota(references.begin(), references.end(), 1u);
    PropertyListFile file{{arrayObject(references, 4), repeated}, 4, 4};
    std::string bytes = file.bytes();
    constexpr std::size_t tableSize = 8;
    const std::size_t tableOffset = bytes.size() - 32 - tableSize;
    const std::string place = bytes.substr(tableOffset + 4, 4);
    std::string table = bytes.substr(tableOffset, 4);
    for (std::size_t number = 0; number < objectCount; ++number)
        table += place;
    bytes.replace(tableOffset, tableSize, table);
    bytes.replace(bytes.size() - objectCountField, 8, bigEndian(objectCount + 1, 8));
    return bytes;
}

std::string manyReferencesToNumbers() {
    constexpr std::size_t count = 1'000'000;
    return PropertyListFile{{arrayObject(std::vector<std::uint64_t>(count, 1)), "\x09"}}.bytes();
}

std::string manyKeys() {
    PropertyListFile file{{""}, 4, 4};
    std::vector<std::uint64_t> keys(200'000);
    std::iota(keys.begin(), keys.end(), 1u);
    for (std::uint64_t key : keys)
        file.objects.push_back(textObject(std::to_string(key)));
    file.objects[0] = dictionaryObject(keys, keys, 4);
    return file.bytes();
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

/// Reads the file with so much more address space than the process has already.
[[noreturn]] void readWithin(const std::string& file, std::size_t additionalBytes) {
    long pages = 0;
    std::FILE* statistics = std::fopen("/proc/self/statm", "r");
    if (statistics == nullptr || std::fscanf(statistics, "%ld", &pages) != 1)
        std::_Exit(2);
    const auto size = static_cast<std::size_t>(pages * sysconf(_SC_PAGESIZE)) + additionalBytes;
    const rlimit limit{size, size};
    setrlimit(RLIMIT_AS, &limit);
    readFile(file);
    std::_Exit(0);
}

TEST(AnUnfoldingPropertyListDeathTest, TakesMemoryInProportionToItsSize) {
    if (isSanitized)
        GTEST_SKIP() << "the sanitizer takes memory of its own";
    const std::string files[] = {
        unfoldingFile(60'000, 14).bytes(),
        overlappingFile(100'000, arrayObject(std::vector<std::uint64_t>(100'000, 1), 4)),
        overlappingFile(100'000, textObject(std::string(400'000, 'x'))),
        manyReferencesToNumbers(),
        manyKeys(),
    };
    for (const std::string& file : files) {
        constexpr std::size_t slack = 4 << 20;
        EXPECT_EXIT(readWithin(file, 48 * file.size() + slack), testing::ExitedWithCode(0), "");
    }
}
TEST(AnUnfoldingPropertyList, GivesNothingWhenItsObjectsOverlap) {
    EXPECT_FALSE(readFile(overlappingFile(1'000, textObject(std::string(10'000, 'x')))));
    EXPECT_FALSE(
        readFile(overlappingFile(1'000, arrayObject(std::vector<std::uint64_t>(1'000, 1), 4))));
}

} // namespace
} // namespace plenzo
