#include "propertylist/binary_output.h"

#include <algorithm>
#include <bit>

namespace plenzo::binary {

std::size_t fittingSize(std::uint64_t number) {
    if (number <= UINT8_MAX)
        return 1;
    if (number <= UINT16_MAX)
        return 2;
    return number <= UINT32_MAX ? 4 : 8;
}

void Output::writeBytes(std::span<const std::byte> bytes) {
    const std::size_t end = m_bytes.size();
    m_bytes.resize(end + bytes.size());
    std::copy(bytes.begin(), bytes.end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(end));
}

void Output::writeInteger(std::uint64_t number, std::size_t byteCount) {
    std::byte bytes[8];
    for (std::size_t index = 0; index < sizeof(bytes); ++index)
        bytes[index] = static_cast<std::byte>(number >> (56 - 8 * index));
    writeBytes(std::span(bytes).last(byteCount));
}

void Output::writeMarker(Marker marker, std::uint64_t count) {
    const auto lower = count < countFollows ? static_cast<std::uint8_t>(count) : countFollows;
    writeByte(static_cast<std::uint8_t>(marker) | lower);
    if (lower == countFollows)
        writeIntegerObject(count);
}

void Output::writeIntegerObject(std::uint64_t number) {
    const std::size_t size = fittingSize(number);
    writeByte(
        static_cast<std::uint8_t>(static_cast<int>(Marker::Integer) | std::countr_zero(size)));
    writeInteger(number, size);
}

} // namespace plenzo::binary
