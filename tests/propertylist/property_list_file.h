#pragma once

#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// A binary property list put together by hand, object by object; it may be as wrong as wanted.
struct PropertyListFile {
    std::vector<std::string> objects;
    std::size_t offsetSize = 4;
    std::size_t referenceSize = 1;
    std::uint64_t topObject = 0;

    std::string bytes() const;
};

/// Where the trailer's fields begin, counted from the end of the file.
inline constexpr std::size_t offsetSizeField = 26;
inline constexpr std::size_t referenceSizeField = 25;
inline constexpr std::size_t objectCountField = 24;
inline constexpr std::size_t topObjectField = 16;
inline constexpr std::size_t tableOffsetField = 8;

std::string bigEndian(std::uint64_t number, std::size_t byteCount);

/// Objects as their bytes.
std::string object(unsigned marker, std::string_view content = {});
std::string objectWithCount(unsigned marker, std::uint64_t count, std::string_view content);
std::string textObject(std::string_view text);
std::string arrayObject(const std::vector<std::uint64_t>& references,
                        std::size_t referenceSize = 1);
std::string dictionaryObject(const std::vector<std::uint64_t>& keys,
                             const std::vector<std::uint64_t>& values,
                             std::size_t referenceSize = 1);

std::optional<Value> readFile(std::string_view file);
std::optional<Value> readFile(const PropertyListFile& file);
/// The value of a file with one object.
std::optional<Value> readObject(std::string_view object);
std::string writeFile(const Value& value);

} // namespace plenzo
