#include "propertylist/binary_objects.h"

#include <algorithm>

namespace plenzo::binary {

namespace {

bool isCollection(std::byte marker) {
    const auto type = static_cast<Marker>(marker & std::byte{0xF0});
    return type == Marker::Array || type == Marker::Dictionary;
}

/// The marker, and a long count behind it.
std::size_t headSize(std::span<const std::byte> object) {
    if ((object[0] & std::byte{0x0F}) != std::byte{countFollows}) {
        return 1;
    }
    return 2 + (std::size_t{1} << std::to_integer<unsigned>(object[1] & std::byte{0x0F}));
}

} // namespace

Objects::Objects() {
    m_output.writeBytes(std::as_bytes(std::span(magic)));
}

void Objects::expect(std::size_t times) {
    constexpr std::size_t mostMoreBytes = std::size_t{1} << 30;
    const std::size_t size = m_output.size() + count() * sizeof(std::uint32_t);
    m_output.reserve(m_output.size() + std::min(size * times, mostMoreBytes));
    m_offsets.reserve(count() + std::min(count() * times, mostMoreBytes / sizeof(std::uint64_t)));
}

void Objects::endWithOutermost() {
    m_offsets.front() = m_offsets.back();
    m_offsets.pop_back();
}

void Objects::narrowReferences(std::size_t referenceSize) {
    const std::span<std::byte> bytes = m_output.mutableBytes();
    std::byte* place = bytes.data() + magic.size();
    for (std::size_t order = 1; order <= count(); ++order) {
        std::uint64_t& offset = m_offsets[order % count()];
        const std::size_t end = order == count()       ? bytes.size()
                                : order + 1 == count() ? m_offsets[0]
                                                       : m_offsets[order + 1];
        const auto object = bytes.subspan(offset, end - offset);
        offset = static_cast<std::uint64_t>(place - bytes.data());
        place = moveNarrowed(object, place, referenceSize);
    }
    m_output.truncate(static_cast<std::size_t>(place - bytes.data()));
}

std::byte* Objects::moveNarrowed(std::span<const std::byte> object, std::byte* place,
                                 std::size_t referenceSize) {
    if (!isCollection(object[0])) {
        return std::copy(object.begin(), object.end(), place);
    }
    const std::size_t head = headSize(object);
    place = std::copy_n(object.begin(), head, place);
    for (std::size_t end = head + wideReferenceSize; end <= object.size();
         end += wideReferenceSize) {
        place =
            std::copy_n(object.begin() + std::ptrdiff_t(end - referenceSize), referenceSize, place);
    }
    return place;
}

} // namespace plenzo::binary
