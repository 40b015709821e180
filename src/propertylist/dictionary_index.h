#pragma once

#include "propertylist/dictionary.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace plenzo {

/// The index of a large dictionary: an open hash table of entry numbers that lies behind the
/// entries in the same block. Small dictionaries have none.
class DictionaryIndex {
public:
    /// Dictionaries of up to this capacity are small.
    static constexpr std::size_t largestSmallCapacity = 16;

    /// How many slots a dictionary of this capacity has; 0 when it is small.
    static std::size_t slotCount(std::size_t capacity);
    /// How many bytes the whole block takes.
    static std::size_t blockSize(std::size_t capacity);

    /// Of a dictionary's block that is not small.
    explicit DictionaryIndex(CollectionBlock& block);

    /// The number of the key's entry, or SIZE_MAX.
    std::size_t find(KeyView key) const;
    /// Of an entry whose key is not in the index yet.
    void add(std::size_t entryNumber);
    /// Makes it anew from the entries.
    void rebuild();

private:
    std::size_t firstSlot(std::string_view name) const;

    Dictionary::Entry* m_entries;
    std::span<std::uint32_t> m_slots;
    std::size_t m_entryCount;
};

} // namespace plenzo
