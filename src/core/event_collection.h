#pragma once

#include "core/record_walk.h"
#include "model/event_dict.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plenzo {

/// Every occurrence known from the host, in the order of arrival, found by "uid" without a walk
/// over the others. Several records may have one "uid", or none. Holds fewer than 2^32 of them.
class EventCollection {
public:
    [[nodiscard]] std::size_t size() const { return m_size; }
    /// In the order of arrival, null where a record was taken out.
    [[nodiscard]] std::span<const EventDict> eventDicts() const { return m_eventDicts; }

    /// Makes room for this many more.
    void reserveMore(std::size_t count);
    /// Skips null ones and deletion notices.
    void append(RecordGroup group);
    /// Takes out and gives the records with this "uid".
    std::vector<EventDict> takeWithUID(std::string_view uid);

private:
    /// Where a record is, beside the hash of its "uid". The text itself is not kept: who shares a
    /// record may change it.
    struct Slot {
        std::uint32_t hash = 0;
        /// Counted from 1; 0 is a free slot.
        std::uint32_t place = 0;
    };

    /// Records from this place on.
    void addToIndex(RecordGroup group, std::size_t firstPlace);
    void addToIndex(Slot filled);
    void rebuildIndex(std::size_t capacity);
    void closeGaps();

    /// Null where a record was taken out.
    std::vector<EventDict> m_eventDicts;
    std::size_t m_size = 0;
    /// An open hash table, at most half full; its size is a power of two.
    std::vector<Slot> m_slots;
};

} // namespace plenzo
