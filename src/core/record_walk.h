#pragma once

#include "model/event_dict.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace plenzo {

/// Walks over very many records wait for memory most of the time. These walk in groups: the handles
/// of a group's records are asked for together, then their entries together, and so on, so that
/// they are waited for together and not one after the other.
using RecordGroup = std::span<const EventDict>;

/// How many records are asked for at a time.
inline constexpr std::size_t recordGroupSize = 16;

/// Asks for the records' entries, without waiting. Skips null ones.
inline void prefetchRecords(RecordGroup group) {
    for (const EventDict& eventDict : group) {
        __builtin_prefetch(eventDict.get());
    }
    for (const EventDict& eventDict : group) {
        if (eventDict) {
            eventDict->prefetch();
        }
    }
}

/// Calls the visitor with each group, whose records' entries have been asked for.
template <typename Visitor>
void forEachGroup(std::span<const EventDict> eventDicts, Visitor visitor) {
    for (std::size_t start = 0; start < eventDicts.size(); start += recordGroupSize) {
        const std::size_t count = std::min(recordGroupSize, eventDicts.size() - start);
        const RecordGroup group = eventDicts.subspan(start, count);
        prefetchRecords(group);
        visitor(group);
    }
}

} // namespace plenzo
