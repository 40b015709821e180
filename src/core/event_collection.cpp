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

std::vector<EventDict> EventCollection::eventDicts() const {
    std::vector<EventDict> result;
    result.reserve(m_size);
    std::ranges::copy_if(m_eventDicts, std::back_inserter(result),
                         [](const EventDict& eventDict) { return eventDict != nullptr; });
    return result;
}

void EventCollection::reserveMore(std::size_t count) {
    const std::size_t capacity = m_eventDicts.size() + count;
    if (capacity > m_eventDicts.capacity()) {
        m_eventDicts.reserve(std::max(capacity, 2 * m_eventDicts.size()));
    }
    if (2 * capacity > m_slots.size()) {
        rebuildIndex(capacity);
    }
}

void EventCollection::append(EventDict eventDict) {
    reserveMore(1);
    m_eventDicts.push_back(std::move(eventDict));
    ++m_size;
    addToIndex(m_eventDicts.size() - 1);
}

void EventCollection::clear() {
    *this = EventCollection();
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

void EventCollection::addToIndex(std::size_t place) {
    const std::uint32_t hash = hashOf(uidOf(*m_eventDicts[place]));
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    while (m_slots[slot].place != 0) {
        slot = (slot + 1) & mask;
    }
    m_slots[slot] = {hash, static_cast<std::uint32_t>(place + 1)};
}

void EventCollection::rebuildIndex(std::size_t capacity) {
    m_slots.assign(std::bit_ceil(2 * capacity), Slot());
    for (std::size_t place = 0; place < m_eventDicts.size(); ++place) {
        if (m_eventDicts[place]) {
            addToIndex(place);
        }
    }
}

void EventCollection::closeGaps() {
    std::erase(m_eventDicts, nullptr);
    rebuildIndex(2 * m_eventDicts.size() + 64);
}

} // namespace plenzo
