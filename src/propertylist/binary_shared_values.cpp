#include "propertylist/binary_shared_values.h"

namespace plenzo::binary {

namespace {

/// Keeps together what lies in one page of memory, as what is written in turn mostly does: then the
/// table is walked along with the values, where a hash without order would miss the caches for
/// each.
std::uint32_t hashOf(const void* identity) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
    constexpr unsigned pageBits = 12;
    constexpr unsigned lineBits = 6;
    constexpr std::uint32_t linesOfPage = (1u << (pageBits - lineBits)) - 1;
    const std::uint64_t address = reinterpret_cast<std::uintptr_t>(identity);
    const auto page = static_cast<std::uint32_t>(((address >> pageBits) * factor) >> 32);
    const auto line = static_cast<std::uint32_t>(address >> lineBits);
    return (page & ~linesOfPage) | (line & linesOfPage);
}

} // namespace

const SharedValues::Entry* SharedValues::find(const void* identity) const {
    const Slot slot = m_slots[slotOf(identity)];
    return slot.place != 0 ? &m_entries[slot.place - 1] : nullptr;
}

std::size_t SharedValues::slotOf(const void* identity) const {
    const std::uint32_t hash = hashOf(identity);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t number = hash & mask;
    for (; m_slots[number].place != 0; number = (number + 1) & mask) {
        const Slot slot = m_slots[number];
        if (slot.hash == hash && m_entries[slot.place - 1].identity == identity) {
            break;
        }
    }
    return number;
}

void SharedValues::add(const Entry& entry) {
    m_entries.push_back(entry);
    if (2 * m_entries.size() > m_slots.size()) {
        grow();
    }
    fill({hashOf(entry.identity), static_cast<std::uint32_t>(m_entries.size())});
}

void SharedValues::fill(Slot filled) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t number = filled.hash & mask;
    while (m_slots[number].place != 0) {
        number = (number + 1) & mask;
    }
    m_slots[number] = filled;
}

void SharedValues::grow() {
    std::vector<Slot> slots(2 * m_slots.size());
    slots.swap(m_slots);
    for (const Slot slot : slots) {
        if (slot.place != 0) {
            fill(slot);
        }
    }
}

} // namespace plenzo::binary
