#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// What the reader and the writer of binary property lists agree on.
///
/// A file is the magic bytes, the objects, a table with the offset of each object, and a trailer.
/// An object begins with a marker: its type above, a count or a size below. Arrays and dictionaries
/// hold references, which are object numbers. All numbers are big-endian.
namespace plenzo::binary {

inline constexpr std::string_view magic = "bplist00";
inline constexpr std::size_t trailerSize = 32;

enum class Marker : std::uint8_t {
    False = 0x08,
    True = 0x09,
    Integer = 0x10, // 2^n bytes follow
    Float = 0x22,
    Double = 0x23,
    Date = 0x33,
    Data = 0x40,
    AsciiString = 0x50,
    Utf16String = 0x60,
    Array = 0xA0,
    Dictionary = 0xD0
};

/// In the marker's lower half: the count is an integer object of its own after the marker.
inline constexpr std::uint8_t countFollows = 0x0F;

/// How deep arrays and dictionaries may lie in each other.
inline constexpr std::uint32_t maximumDepth = 512;

/// How many steps a walk over all values of a file may take. They are counted in 32 bits.
constexpr std::uint64_t maximumSteps(std::uint64_t fileSize) {
    constexpr std::uint64_t stepsPerByte = 16;
    return fileSize < UINT32_MAX / stepsPerByte ? stepsPerByte * fileSize : UINT32_MAX;
}

/// The steps that an object of this many bytes takes, its contents apart when it is a collection.
constexpr std::uint64_t stepsOfObject(std::uint64_t byteCount) {
    return 1 + byteCount / 64;
}

} // namespace plenzo::binary
