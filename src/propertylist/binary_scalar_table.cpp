#include "propertylist/binary_scalar_table.h"

#include "propertylist/binary_scalars.h"
#include "propertylist/keyed_hash.h"

#include <cstring>

namespace plenzo::binary {

namespace {

/// Of a marker and up to 16 bytes. Whoever makes them fall together gains nothing.
std::uint32_t numberHash(std::span<const std::byte> bytes) {
    std::uint64_t word = 0;
    for (std::byte byte : bytes)
        word = word << 8 | std::to_integer<std::uint64_t>(byte);
    return static_cast<std::uint32_t>((word * 0x9E3779B97F4A7C15u) >> 32);
}

} // namespace

ScalarTable::Added ScalarTable::add(const Value& value) {
    if (const auto text = value.string())
        return addText(*text);
    const std::size_t offset = m_output.size();
    if (const auto data = value.data()) {
        const std::uint32_t hash = hashAndPrepare(data->data(), data->size());
        const std::size_t contentSize = writeScalar(m_output, value);
        return {unique(offset, hash), stepsOfObject(contentSize)};
    }
    const std::size_t contentSize = writeScalar(m_output, value);
    return {uniqueAmongRecent(offset), stepsOfObject(contentSize)};
}

ScalarTable::Added ScalarTable::addText(std::string_view text) {
    const std::size_t offset = m_output.size();
    const std::uint32_t hash = hashAndPrepare(text.data(), text.size());
    const std::size_t contentSize = writeText(m_output, text);
    return {unique(offset, hash), stepsOfObject(contentSize)};
}

std::uint32_t ScalarTable::hashAndPrepare(const void* bytes, std::size_t size) {
    if (2 * (m_offsets.size() + 1) > m_slots.size())
        growSlots();
    const auto hash = static_cast<std::uint32_t>(keyedHash(bytes, size));
    // In a large table the slot is far away; it comes while the object is written.
    __builtin_prefetch(&m_slots[hash & (m_slots.size() - 1)]);
    return hash;
}

std::uint32_t ScalarTable::unique(std::size_t offset, std::uint32_t hash) {
    const auto bytes = m_output.bytes().subspan(offset);
    for (std::size_t place = hash & (m_slots.size() - 1); m_slots[place].number != freeNumber;
         place = (place + 1) & (m_slots.size() - 1)) {
        if (m_slots[place].hash != hash || !isTwin(m_slots[place].number, bytes))
            continue;
        m_output.truncate(offset);
        return m_slots[place].number;
    }
    put({hash, keep(offset)});
    return static_cast<std::uint32_t>(m_offsets.size() - 1);
}

std::uint32_t ScalarTable::uniqueAmongRecent(std::size_t offset) {
    const auto bytes = m_output.bytes().subspan(offset);
    const std::uint32_t hash = numberHash(bytes);
    Slot& slot = m_recent[hash % m_recent.size()];
    if (slot.number != freeNumber && slot.hash == hash && isTwin(slot.number, bytes)) {
        m_output.truncate(offset);
        return slot.number;
    }
    slot = {hash, keep(offset)};
    return slot.number;
}

std::uint32_t ScalarTable::keep(std::size_t offset) {
    m_offsets.push_back(offset);
    return static_cast<std::uint32_t>(m_offsets.size() - 1);
}

// An object's first bytes say where it ends, and so those that begin alike are alike.
bool ScalarTable::isTwin(std::uint32_t number, std::span<const std::byte> bytes) const {
    const std::byte* other = m_output.bytes().data() + m_offsets[number];
    return std::memcmp(other, bytes.data(), bytes.size()) == 0;
}

void ScalarTable::growSlots() {
    constexpr std::size_t firstSlotCount = 64;
    std::vector<Slot> slots(m_slots.empty() ? firstSlotCount : 2 * m_slots.size());
    slots.swap(m_slots);
    for (const Slot& slot : slots)
        if (slot.number != freeNumber)
            put(slot);
}

void ScalarTable::put(Slot slot) {
    std::size_t place = slot.hash & (m_slots.size() - 1);
    while (m_slots[place].number != freeNumber)
        place = (place + 1) & (m_slots.size() - 1);
    m_slots[place] = slot;
}

} // namespace plenzo::binary
