#pragma once

#include "propertylist/big_endian.h"
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
    std::span<std::byte> mutableBytes() { return m_bytes; }
    std::vector<std::byte> take() { return std::move(m_bytes); }

    void reserve(std::size_t size) { m_bytes.reserve(size); }
    /// Takes back what was written last.
    void truncate(std::size_t size) { m_bytes.resize(size); }

    void writeBytes(std::span<const std::byte> bytes);
    /// So many integers of 1 to 8 bytes each, from a function of their number.
    template <typename NumberAt>
    void writeIntegers(std::size_t count, std::size_t byteCount, NumberAt numberAt) {
        std::byte* place = extend(count * byteCount + slack);
        for (std::size_t number = 0; number < count; ++number)
            place = storeBigEndian(place, numberAt(number), byteCount);
        truncate(m_bytes.size() - slack);
    }
    /// The lowest 1 to 8 bytes.
    void writeInteger(std::uint64_t number, std::size_t byteCount);
    void writeByte(std::uint8_t byte) { m_bytes.push_back(static_cast<std::byte>(byte)); }
    void writeMarker(Marker marker) { writeByte(static_cast<std::uint8_t>(marker)); }
    /// The marker of a type with a count, and the count behind it when it is long.
    void writeMarker(Marker marker, std::uint64_t count);
    /// An integer object, in 1, 2, 4 or 8 bytes.
    void writeIntegerObject(std::uint64_t number);

private:
    /// A store of eight bytes may reach so far behind a shorter integer.
    static constexpr std::size_t slack = 7;

    /// Makes room to be filled.
    std::byte* extend(std::size_t size);

    std::vector<std::byte> m_bytes;
};

/// The smallest of 1, 2, 4 and 8 bytes that the number fits in.
std::size_t fittingSize(std::uint64_t number);

} // namespace plenzo::binary
