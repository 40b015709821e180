#include "propertylist/binary_reader.h"

#include "propertylist/binary_property_list.h"
#include "propertylist/binary_scalars.h"

#include <algorithm>
#include <utility>

namespace plenzo {

namespace binary {

Reader::Reader(const ObjectTable& table, std::size_t fileSize)
    : m_table(table), m_stepsLeft(maximumSteps(fileSize)), m_bytesLeft(2 * fileSize),
      m_known(table.objectCount()), m_keyNumbers(table.objectCount(), noKey) {}

bool Reader::takeSteps(std::uint64_t steps) {
    if (steps > m_stepsLeft)
        return false;
    m_stepsLeft -= steps;
    return true;
}

bool Reader::takeBytes(std::uint64_t byteCount) {
    if (byteCount > m_bytesLeft)
        return false;
    m_bytesLeft -= byteCount;
    return true;
}

Value Reader::objectValue(std::size_t objectNumber, std::uint32_t depth) {
    if (objectNumber >= m_known.size())
        return {};
    Known& known = m_known[objectNumber];
    if (!known.value.isNothing())
        return knownValue(known, depth);
    const auto head = m_table.objectHead(objectNumber);
    return head ? newValue(*head, known, depth) : Value();
}

Value Reader::knownValue(const Known& known, std::uint32_t depth) {
    m_deepest = std::max(m_deepest, depth + known.height);
    if (m_deepest > maximumDepth || !takeSteps(known.steps))
        return {};
    return known.value;
}

Value Reader::newValue(const ObjectHead& head, Known& known, std::uint32_t depth) {
    switch (head.marker) {
    case Marker::Array:
    case Marker::Dictionary:
        return collection(head, known, depth + 1);
    case Marker::Data:
    case Marker::AsciiString:
    case Marker::Utf16String:
        return newBytesValue(head, known);
    default:
        return takeSteps(1) ? scalarValue(head) : Value();
    }
}

Value Reader::newBytesValue(const ObjectHead& head, Known& known) {
    const std::uint64_t steps = stepsOfObject(byteCount(head));
    if (!takeSteps(steps) || !takeBytes(byteCount(head)))
        return {};
    known.steps = static_cast<std::uint32_t>(steps);
    return known.value = bytesValue(head);
}

// A loop of references ends here too: its first round goes down until the depth is exceeded.
Value Reader::collection(const ObjectHead& head, Known& known, std::uint32_t depth) {
    const std::uint64_t stepsLeftBefore = m_stepsLeft;
    const std::uint32_t deepestBefore = std::exchange(m_deepest, depth);
    if (depth > maximumDepth || !takeSteps(1))
        return {};
    Value value = head.marker == Marker::Array ? array(head, depth) : dictionary(head, depth);
    known.steps = static_cast<std::uint32_t>(stepsLeftBefore - m_stepsLeft);
    known.height = m_deepest - depth + 1;
    m_deepest = std::max(m_deepest, deepestBefore);
    return known.value = std::move(value);
}

Value Reader::array(const ObjectHead& head, std::uint32_t depth) {
    const std::size_t step = m_table.referenceSize();
    if (!takeBytes(head.count * step))
        return {};
    Array array;
    array.reserve(head.count);
    for (const std::byte* place = head.content; place != head.content + head.count * step;
         place += step) {
        Value value = objectValue(m_table.referenceAt(place), depth);
        if (value.isNothing())
            return {};
        array.append(std::move(value));
    }
    return array;
}

Value Reader::dictionary(const ObjectHead& head, std::uint32_t depth) {
    const std::size_t step = m_table.referenceSize();
    if (!takeBytes(2 * head.count * step))
        return {};
    Dictionary dictionary;
    // Whoever keeps it may add something of its own.
    dictionary.reserve(head.count + 1);
    const std::byte* const values = head.content + head.count * step;
    for (const std::byte* place = head.content; place != values; place += step) {
        const std::uint32_t keyNumber = keyNumberOf(m_table.referenceAt(place));
        if (keyNumber == noKey)
            return {};
        Value value = objectValue(m_table.referenceAt(place + head.count * step), depth);
        if (value.isNothing())
            return {};
        dictionary.set(m_keys[keyNumber].key, std::move(value));
    }
    return dictionary;
}

std::uint32_t Reader::keyNumberOf(std::size_t objectNumber) {
    if (objectNumber >= m_keyNumbers.size())
        return noKey;
    std::uint32_t& keyNumber = m_keyNumbers[objectNumber];
    if (keyNumber == noKey) {
        const auto head = m_table.objectHead(objectNumber);
        if (!head || !addKey(*head))
            return noKey;
        keyNumber = static_cast<std::uint32_t>(m_keys.size() - 1);
    }
    return takeSteps(m_keys[keyNumber].steps) ? keyNumber : noKey;
}

bool Reader::addKey(const ObjectHead& head) {
    if (head.marker != Marker::AsciiString && head.marker != Marker::Utf16String)
        return false;
    if (!takeBytes(byteCount(head)))
        return false;
    const Value name = bytesValue(head);
    if (name.isNothing())
        return false;
    m_keys.push_back({Key(*name.string()), stepsOfObject(byteCount(head))});
    return m_keys.size() < noKey;
}

} // namespace binary

std::optional<Value> readBinaryPropertyList(std::span<const std::byte> bytes) {
    const auto table = binary::ObjectTable::ofFile(bytes);
    if (!table)
        return std::nullopt;
    Value value = binary::Reader(*table, bytes.size()).read();
    if (value.isNothing())
        return std::nullopt;
    return value;
}

} // namespace plenzo
