#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace plenzo::binary {

/// The numbers of the objects that were written last, by a hash of their bytes. Its size is
/// bounded, so that it stays near the processor however many objects there are: what recurs in
/// records recurs soon.
class RecentObjects {
public:
    /// Remembers up to this many objects, a power of two; all of the first fourth of them, but for
    /// one in thousands.
    explicit RecentObjects(std::size_t maximumCount);

    /// The number of the object that has this hash and that the predicate knows as the same one;
    /// `noNumber` when none is remembered.
    template <typename IsSame>
    std::uint32_t find(std::uint32_t hash, IsSame isSame) const {
        for (const Slot& slot : m_buckets[bucketOf(hash)].slots)
            if (slot.number != noNumber && slot.hash == hash && isSame(slot.number))
                return slot.number;
        return noNumber;
    }

    /// Remembers an object; the oldest one of its bucket may go.
    void add(std::uint32_t hash, std::uint32_t number);

    static constexpr std::uint32_t noNumber = UINT32_MAX;

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = noNumber;
    };
    static constexpr std::size_t slotsPerBucket = 8;
    /// The newest first.
    struct alignas(slotsPerBucket * sizeof(Slot)) Bucket {
        std::array<Slot, slotsPerBucket> slots;
    };

    std::size_t bucketOf(std::uint32_t hash) const { return hash & (m_buckets.size() - 1); }
    void put(Slot slot);
    void grow();

    std::size_t m_maximumBucketCount;
    std::size_t m_count = 0;
    std::vector<Bucket> m_buckets{1};
};

} // namespace plenzo::binary
