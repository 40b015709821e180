#include "core/event_collection.h"

#include "propertylist/keyed_hash.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

namespace plenzo {

namespace {

std::uint32_t hashOf(std::string_view uid) {
    return static_cast<std::uint32_t>(keyedHash(uid.data(), uid.size()));
}

std::string_view uidOf(const Dictionary& eventDict) {
    return eventDict.stringForKey(keys::uid).value_or(std::string_view());
}

} // namespace

void EventCollection::reserveMore(std::size_t count) {
    const std::size_t capacity = m_eventDicts.size() + count;
    if (capacity > m_eventDicts.capacity()) {
        m_eventDicts.reserve(std::max(capacity, 2 * m_eventDicts.size()));
    }
    if (2 * capacity > m_slots.size()) {
        rebuildIndex(capacity);
    }
}

void EventCollection::append(RecordGroup group) {
    reserveMore(group.size());
    const std::size_t firstPlace = m_eventDicts.size();
    std::ranges::copy_if(group, std::back_inserter(m_eventDicts), [](const EventDict& eventDict) {
        return eventDict && !isDeletionNotice(*eventDict);
    });
    m_size += m_eventDicts.size() - firstPlace;
    addToIndex(eventDicts().subspan(firstPlace), firstPlace);
}

std::vector<EventDict> EventCollection::takeWithUID(std::string_view uid) {
    std::vector<EventDict> taken;
    if (m_slots.empty()) {
        return taken;
    }
    const std::uint32_t hash = hashOf(uid);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask; m_slots[slot].place != 0; slot = (slot + 1) & mask) {
        EventDict& eventDict = m_eventDicts[m_slots[slot].place - 1];
        if (m_slots[slot].hash == hash && eventDict && eventDict->stringForKey(keys::uid) == uid) {
            taken.push_back(std::exchange(eventDict, nullptr));
        }
    }
    m_size -= taken.size();
    if (m_eventDicts.size() > 2 * m_size + 64) {
        closeGaps();
    }
    return taken;
}

void EventCollection::addToIndex(RecordGroup group, std::size_t firstPlace) {
    for (const EventDict& eventDict : group) {
        __builtin_prefetch(eventDict ? uidOf(*eventDict).data() : nullptr);
    }
    auto place = static_cast<std::uint32_t>(firstPlace);
    for (const EventDict& eventDict : group) {
        ++place;
        if (eventDict) {
            addToIndex({hashOf(uidOf(*eventDict)), place});
        }
    }
}

void EventCollection::addToIndex(Slot filled) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = filled.hash & mask;
    while (m_slots[slot].place != 0) {
        slot = (slot + 1) & mask;
    }
    m_slots[slot] = filled;
}

void EventCollection::rebuildIndex(std::size_t capacity) {
    m_slots.assign(std::bit_ceil(2 * capacity), Slot());
    std::size_t place = 0;
    forEachGroup(eventDicts(), [this, &place](RecordGroup group) {
        addToIndex(group, place);
        place += group.size();
    });
}

void EventCollection::closeGaps() {
    std::erase(m_eventDicts, nullptr);
    rebuildIndex(2 * m_eventDicts.size() + 64);
}

} // namespace plenzo
