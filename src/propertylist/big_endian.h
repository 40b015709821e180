#pragma once

#include <cstddef>
#include <cstdint>

namespace plenzo::binary {

/// The unsigned integer in the 1 to 8 bytes from here on. Eight bytes are loaded whatever the size.
inline std::uint64_t loadBigEndian(const std::byte* place, std::size_t byteCount) {
    auto byteAt = [place](std::size_t index, unsigned shift) {
        return std::to_integer<std::uint64_t>(place[index]) << shift;
    };
    // Spelled out, as compilers then make one load of it.
    const std::uint64_t word = byteAt(0, 56) | byteAt(1, 48) | byteAt(2, 40) | byteAt(3, 32) |
                               byteAt(4, 24) | byteAt(5, 16) | byteAt(6, 8) | byteAt(7, 0);
    return word >> (64 - 8 * byteCount);
}

/// Stores the lowest 1 to 8 bytes and gives the place behind them. Eight bytes are stored whatever
/// the size.
inline std::byte* storeBigEndian(std::byte* place, std::uint64_t number, std::size_t byteCount) {
    const std::uint64_t word = number << (64 - 8 * byteCount);
    place[0] = static_cast<std::byte>(word >> 56);
    place[1] = static_cast<std::byte>(word >> 48);
    place[2] = static_cast<std::byte>(word >> 40);
    place[3] = static_cast<std::byte>(word >> 32);
    place[4] = static_cast<std::byte>(word >> 24);
    place[5] = static_cast<std::byte>(word >> 16);
    place[6] = static_cast<std::byte>(word >> 8);
    place[7] = static_cast<std::byte>(word);
    return place + byteCount;
}

} // namespace plenzo::binary
