#pragma once

#include "propertylist/binary_format.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace plenzo::binary {

/// The bytes of a file as they are written.
class Output {
public:
    std::size_t size() const { return m_bytes.size(); }
    std::span<const std::byte> bytes() const { return m_bytes; }
    std::vector<std::byte> take() { return std::move(m_bytes); }

    void reserve(std::size_t size) { m_bytes.reserve(size); }
    /// Takes back what was written last.
    void truncate(std::size_t size) { m_bytes.resize(size); }

    void writeBytes(std::span<const std::byte> bytes);
    /// Makes room for the caller to fill, until the next call.
    std::byte* extend(std::size_t size);
    /// The lowest 1 to 8 bytes.
    void writeInteger(std::uint64_t number, std::size_t byteCount);
    void writeByte(std::uint8_t byte) { m_bytes.push_back(static_cast<std::byte>(byte)); }
    void writeMarker(Marker marker) { writeByte(static_cast<std::uint8_t>(marker)); }
    /// The marker of a type with a count, and the count behind it when it is long.
    void writeMarker(Marker marker, std::uint64_t count);
    /// An integer object, in 1, 2, 4 or 8 bytes.
    void writeIntegerObject(std::uint64_t number);

private:
    std::vector<std::byte> m_bytes;
};

/// Writes the lowest 1 to 8 bytes to where there is room; gives the place behind them.
inline std::byte* putInteger(std::byte* place, std::uint64_t number, std::size_t byteCount) {
    for (std::size_t shift = 8 * byteCount; shift != 0; shift -= 8)
        *place++ = static_cast<std::byte>(number >> (shift - 8));
    return place;
}

/// The smallest of 1, 2, 4 and 8 bytes that the number fits in.
std::size_t fittingSize(std::uint64_t number);

} // namespace plenzo::binary
