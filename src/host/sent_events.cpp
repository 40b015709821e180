#include "host/sent_events.h"

#include "propertylist/known_keys.h"

#include <unordered_set>
#include <utility>

namespace plenzo {

namespace {

std::string uidOf(const Value& record) {
    const Dictionary* dictionary = record.dictionary();
    return std::string(dictionary != nullptr ? dictionary->stringForKey(keys::uid).value_or("")
                                             : "");
}

} // namespace

SentEvents::ByUid SentEvents::byUid(const Array& events) {
    ByUid byUid;
    byUid.reserve(events.size());
    for (const Value& record : events) {
        byUid[uidOf(record)].append(record);
    }
    return byUid;
}

void SentEvents::reset(const Array& events) {
    m_events = events;
    m_byUid = byUid(events);
}

Array SentEvents::deltaTo(const Array& events) {
    ByUid next = byUid(events);
    const auto isIn = [](const ByUid& records, const std::string& uid, const Array& same) {
        const auto found = records.find(uid);
        return found != records.end() && Value(found->second) == Value(same);
    };
    Array delta;
    std::unordered_set<std::string> deleted;
    for (const Value& record : m_events) {
        std::string uid = uidOf(record);
        if (!isIn(next, uid, m_byUid[uid]) && deleted.insert(uid).second) {
            delta.append(Dictionary{{keys::uid, uid}, {keys::del, true}});
        }
    }
    for (const Value& record : events) {
        const std::string uid = uidOf(record);
        if (!isIn(m_byUid, uid, next[uid])) {
            delta.append(record);
        }
    }
    m_events = events;
    m_byUid = std::move(next);
    return delta;
}

} // namespace plenzo
