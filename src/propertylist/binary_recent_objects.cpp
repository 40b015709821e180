#include "propertylist/binary_recent_objects.h"

#include <algorithm>

namespace plenzo::binary {

RecentObjects::RecentObjects(std::size_t maximumCount)
    : m_maximumBucketCount(maximumCount / slotsPerBucket) {}

void RecentObjects::add(std::uint32_t hash, std::uint32_t number) {
    // Two in eight on average hardly ever fill a bucket.
    if (++m_count > 2 * m_buckets.size() && m_buckets.size() < m_maximumBucketCount)
        grow();
    put({hash, number});
}

void RecentObjects::put(Slot slot) {
    auto& slots = m_buckets[bucketOf(slot.hash)].slots;
    std::copy_backward(slots.begin(), slots.end() - 1, slots.end());
    slots.front() = slot;
}

void RecentObjects::grow() {
    std::vector<Bucket> buckets(2 * m_buckets.size());
    buckets.swap(m_buckets);
    for (const Bucket& bucket : buckets)
        for (std::size_t age = slotsPerBucket; age-- > 0;)
            if (bucket.slots[age].number != noNumber)
                put(bucket.slots[age]);
}

} // namespace plenzo::binary
