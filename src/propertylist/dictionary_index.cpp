#include "propertylist/dictionary_index.h"

#include "propertylist/keyed_hash.h"

#include <algorithm>
#include <bit>

namespace plenzo {

namespace {

constexpr std::uint32_t freeSlot = UINT32_MAX;

} // namespace

std::size_t DictionaryIndex::slotCount(std::size_t capacity) {
    return capacity <= largestSmallCapacity ? 0 : std::bit_ceil(capacity + capacity / 2);
}

std::size_t DictionaryIndex::blockSize(std::size_t capacity) {
    return CollectionBlock::elementsOffset + capacity * sizeof(Dictionary::Entry) +
           slotCount(capacity) * sizeof(std::uint32_t);
}

DictionaryIndex::DictionaryIndex(CollectionBlock& block)
    : m_entries(block.elements<Dictionary::Entry>()),
      m_slots(reinterpret_cast<std::uint32_t*>(m_entries + block.capacity),
              slotCount(block.capacity)),
      m_entryCount(block.size) {}

std::size_t DictionaryIndex::firstSlot(std::string_view name) const {
    return keyedHash(name.data(), name.size()) & (m_slots.size() - 1);
}

std::size_t DictionaryIndex::find(KeyView key) const {
    for (std::size_t slot = firstSlot(key.name()); m_slots[slot] != freeSlot;
         slot = (slot + 1) & (m_slots.size() - 1))
        if (key.matches(m_entries[m_slots[slot]].key))
            return m_slots[slot];
    return SIZE_MAX;
}

void DictionaryIndex::add(std::size_t entryNumber) {
    std::size_t slot = firstSlot(m_entries[entryNumber].key.name());
    while (m_slots[slot] != freeSlot)
        slot = (slot + 1) & (m_slots.size() - 1);
    m_slots[slot] = static_cast<std::uint32_t>(entryNumber);
}

void DictionaryIndex::rebuild() {
    std::fill(m_slots.begin(), m_slots.end(), freeSlot);
    for (std::size_t number = 0; number < m_entryCount; ++number)
        add(number);
}

} // namespace plenzo
