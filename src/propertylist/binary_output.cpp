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

std::byte* Output::extend(std::size_t size) {
    const std::size_t end = m_bytes.size();
    m_bytes.resize(end + size);
    return m_bytes.data() + end;
}

void Output::writeBytes(std::span<const std::byte> bytes) {
    std::copy(bytes.begin(), bytes.end(), extend(bytes.size()));
}

void Output::writeInteger(std::uint64_t number, std::size_t byteCount) {
    writeIntegers(1, byteCount, [number](std::size_t) { return number; });
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
