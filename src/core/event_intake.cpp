#include "core/event_intake.h"

#include "model/alarm_computation.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace plenzo {

namespace {

bool isDeletionNotice(const Dictionary& eventDict) {
    return eventDict.contains(keys::del);
}

/// The agent's own copies, independent of what arrived.
std::vector<EventDict> deepCopies(const Array& eventDicts) {
    std::vector<EventDict> copies;
    copies.reserve(eventDicts.size());
    for (const Value& eventDict : eventDicts) {
        if (const Dictionary* dictionary = eventDict.dictionary()) {
            copies.push_back(std::make_shared<Dictionary>(*dictionary));
        }
    }
    return copies;
}

} // namespace

EventIntake::EventIntake(Collaborators collaborators, std::function<void()> queueChanged)
    : m_collaborators(collaborators), m_queueChanged(std::move(queueChanged)) {}

void EventIntake::processEventDicts(const Array& eventDicts, bool delta,
                                    std::optional<Instant> issueTime) {
    auto copies = deepCopies(eventDicts);
    setEventColor(copies);
    processEvents(std::move(copies), delta, issueTime);
}

// By value: the batch may be the collection that this replaces.
void EventIntake::processEvents(std::vector<EventDict> eventDicts, bool delta,
                                std::optional<Instant> issueTime) {
    if (delta) {
        removeDeletedEvents(eventDicts);
    } else {
        m_allEventDicts.clear();
        m_collaborators.queue.clear();
    }
    addEvents(std::move(eventDicts), issueTime);
    m_collaborators.queue.sort();
    m_queueChanged();
}

void EventIntake::removeDeletedEvents(const std::vector<EventDict>& eventDicts) {
    std::unordered_set<std::string_view> deleted;
    for (const EventDict& eventDict : eventDicts) {
        const auto uid = eventDict->stringForKey(keys::uid);
        if (uid && isDeletionNotice(*eventDict)) {
            deleted.insert(*uid);
        }
    }
    if (deleted.empty()) {
        return;
    }
    m_collaborators.queue.removeAlarmsWithUIDs(deleted);
    std::erase_if(m_allEventDicts, [&deleted](const EventDict& eventDict) {
        const auto uid = eventDict->stringForKey(keys::uid);
        return uid && deleted.contains(*uid);
    });
}

void EventIntake::addEvents(std::vector<EventDict> eventDicts, std::optional<Instant> issueTime) {
    const AlarmContext context{.now = m_collaborators.clock.now(),
                               .systemZone = m_collaborators.regionalSettings.timeZone()};
    for (EventDict& eventDict : eventDicts) {
        if (isDeletionNotice(*eventDict)) {
            continue;
        }
        m_collaborators.queue.append(
            alarmsForEventDict(eventDict, issueTime, ProximityAlarms::Exclude, context));
        m_allEventDicts.push_back(std::move(eventDict));
    }
}

void setEventColor(const std::vector<EventDict>& eventDicts) {
    for (const EventDict& eventDict : eventDicts) {
        if (eventDict->contains(keys::colInt)) {
            const std::int64_t packed = eventDict->integerForKey(keys::colInt);
            eventDict->set(keys::color, Value(colorFromPackedInteger(packed)));
        }
    }
}

} // namespace plenzo
