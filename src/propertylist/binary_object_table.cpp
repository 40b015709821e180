#include "propertylist/binary_object_table.h"

#include <algorithm>
#include <cstring>

namespace plenzo::binary {

namespace {

/// Where the fields lie in the trailer.
constexpr std::size_t offsetSizeField = 6;
constexpr std::size_t referenceSizeField = 7;
constexpr std::size_t objectCountField = 8;
constexpr std::size_t topObjectField = 16;
constexpr std::size_t tableOffsetField = 24;

bool hasMagic(std::span<const std::byte> file) {
    return std::memcmp(file.data(), magic.data(), magic.size()) == 0;
}

Marker markerOf(std::uint8_t first) {
    // The types with a count have it in the lower half of the marker.
    return static_cast<Marker>(first < 0x40 && first >> 4 != 1 ? first : first & 0xF0);
}

} // namespace

std::optional<ObjectTable> ObjectTable::ofFile(std::span<const std::byte> file) {
    if (file.size() < magic.size() + trailerSize || !hasMagic(file))
        return std::nullopt;
    ObjectTable table(file);
    if (!table.isSound())
        return std::nullopt;
    return table;
}

ObjectTable::ObjectTable(std::span<const std::byte> file) : m_file(file) {
    const std::byte* trailer = file.data() + file.size() - trailerSize;
    m_offsetSize = std::to_integer<std::size_t>(trailer[offsetSizeField]);
    m_referenceSize = std::to_integer<std::size_t>(trailer[referenceSizeField]);
    m_objectCount = integerAt(trailer + objectCountField, 8);
    m_topObject = integerAt(trailer + topObjectField, 8);
    m_tableOffset = integerAt(trailer + tableOffsetField, 8);
    m_objectsEnd = file.data() + std::min<std::uint64_t>(m_tableOffset, file.size() - trailerSize);
}

bool ObjectTable::isSound() const {
    const std::size_t trailerOffset = m_file.size() - trailerSize;
    return m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8 &&
           m_tableOffset >= magic.size() && m_tableOffset <= trailerOffset &&
           m_objectCount <= (trailerOffset - m_tableOffset) / m_offsetSize &&
           m_topObject < m_objectCount;
}

const std::byte* ObjectTable::placeOf(std::size_t objectNumber) const {
    if (objectNumber >= m_objectCount)
        return nullptr;
    const std::uint64_t offset =
        integerAt(m_file.data() + m_tableOffset + objectNumber * m_offsetSize, m_offsetSize);
    return offset >= magic.size() && offset < m_tableOffset ? m_file.data() + offset : nullptr;
}

std::optional<ObjectHead> ObjectTable::objectHead(std::size_t objectNumber) const {
    const std::byte* place = placeOf(objectNumber);
    if (place == nullptr)
        return std::nullopt;
    const auto first = std::to_integer<std::uint8_t>(*place);
    ObjectHead head{markerOf(first), first & 0x0Fu, place + 1};
    if (head.marker == Marker::Integer)
        head.count = std::uint64_t{1} << head.count;
    else if (head.count == countFollows && !readLongCount(head))
        return std::nullopt;
    const auto size = contentSize(head);
    if (!size || *size > bytesFrom(head.content))
        return std::nullopt;
    return head;
}

bool ObjectTable::readLongCount(ObjectHead& head) const {
    if (bytesFrom(head.content) == 0)
        return false;
    const auto marker = std::to_integer<std::uint8_t>(*head.content++);
    const std::size_t size = std::size_t{1} << (marker & 0x0F);
    if (markerOf(marker) != Marker::Integer || size > 8 || size > bytesFrom(head.content))
        return false;
    head.count = integerAt(head.content, size);
    head.content += size;
    return true;
}

std::optional<std::uint64_t> ObjectTable::contentSize(const ObjectHead& head) const {
    switch (head.marker) {
    case Marker::False:
    case Marker::True:
        return 0;
    case Marker::Float:
        return 4;
    case Marker::Double:
    case Marker::Date:
        return 8;
    case Marker::Integer:
    case Marker::Data:
    case Marker::AsciiString:
        return head.count;
    case Marker::Utf16String:
    case Marker::Array:
    case Marker::Dictionary:
        break;
    default:
        return std::nullopt;
    }
    if (head.count > m_file.size())
        return std::nullopt;
    if (head.marker == Marker::Utf16String)
        return 2 * head.count;
    return (head.marker == Marker::Array ? 1 : 2) * head.count * m_referenceSize;
}

} // namespace plenzo::binary
