#pragma once

#include "propertylist/big_endian.h"
#include "propertylist/binary_format.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace plenzo::binary {

/// Where an object's content lies. For a collection the count is that of its elements or entries,
/// for the others that of its bytes, except UTF-16 text, whose units it counts.
struct ObjectHead {
    Marker marker;
    std::uint64_t count;
    const std::byte* content;
};

/// The frame of a binary property list: finds the objects of a file in place. Whatever it hands out
/// lies inside the file's objects.
class ObjectTable {
public:
    /// Nothing when the magic bytes, the trailer or the place of the offset table are wrong.
    static std::optional<ObjectTable> ofFile(std::span<const std::byte> file);

    std::size_t objectCount() const { return m_objectCount; }
    std::size_t topObject() const { return m_topObject; }
    std::size_t referenceSize() const { return m_referenceSize; }

    /// Nothing when there is no such object, its type is unknown, or it ends beyond the objects.
    std::optional<ObjectHead> objectHead(std::size_t objectNumber) const;

    /// The object number at a place inside a collection's content; perhaps that of no object.
    std::size_t referenceAt(const std::byte* place) const {
        return static_cast<std::size_t>(integerAt(place, m_referenceSize));
    }

    /// An unsigned integer of 1 to 8 bytes at a place inside the objects. The trailer lies behind
    /// them, and so there are always eight bytes to load.
    static std::uint64_t integerAt(const std::byte* place, std::size_t byteCount) {
        return loadBigEndian(place, byteCount);
    }

private:
    explicit ObjectTable(std::span<const std::byte> file);

    bool isSound() const;
    std::size_t bytesFrom(const std::byte* place) const {
        return static_cast<std::size_t>(m_objectsEnd - place);
    }
    const std::byte* placeOf(std::size_t objectNumber) const;
    /// Reads the count that follows the marker, and moves the content behind it.
    bool readLongCount(ObjectHead& head) const;
    std::optional<std::uint64_t> contentSize(const ObjectHead& head) const;

    std::span<const std::byte> m_file;
    std::size_t m_offsetSize;
    std::size_t m_referenceSize;
    std::uint64_t m_objectCount;
    std::uint64_t m_topObject;
    std::uint64_t m_tableOffset;
    const std::byte* m_objectsEnd;
};

} // namespace plenzo::binary
