#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plenzo::binary {

/// The values that several places share and that have been written, found by what they share. When
/// a whole collection of records is kept elsewhere too, there is one for nearly every value of it.
class SharedValues {
public:
    struct Entry {
        const void* identity;
        /// To the object that it was written as.
        std::uint32_t reference;
        /// How many collections lie in each other.
        std::uint32_t height;
        /// Of a walk over it.
        std::uint64_t steps;
    };

    /// Null when it is not known. Valid until the next one is added.
    const Entry* find(const void* identity) const;
    /// One that is not known yet.
    void add(const Entry& entry);

private:
    struct Slot {
        std::uint32_t hash = 0;
        /// Counted from 1; 0 is a free slot.
        std::uint32_t place = 0;
    };

    /// Where it is, or would be.
    std::size_t slotOf(const void* identity) const;
    void fill(Slot filled);
    void grow();

    std::vector<Entry> m_entries;
    /// An open hash table, at most half full; its size is a power of two.
    std::vector<Slot> m_slots{64};
};

} // namespace plenzo::binary
