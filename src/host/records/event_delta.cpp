#include "host/records/event_delta.h"

#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace plenzo {

namespace {

/// The records of each "uid". The views are those of the records.
using ByUid = std::unordered_map<std::string_view, Array>;

std::string_view uidOf(const Value& record) {
    const Dictionary* dictionary = record.dictionary();
    return dictionary != nullptr ? dictionary->stringForKey(keys::uid).value_or("") : "";
}

ByUid byUid(const Array& events) {
    ByUid byUid;
    byUid.reserve(events.size());
    for (const Value& record : events) {
        byUid[uidOf(record)].append(record);
    }
    return byUid;
}

bool areSame(const ByUid& records, const ByUid& others, std::string_view uid) {
    const auto one = records.find(uid);
    const auto other = others.find(uid);
    return one != records.end() && other != others.end() && one->second == other->second;
}

} // namespace

Array eventDelta(const Array& before, const Array& after) {
    const ByUid known = byUid(before);
    const ByUid next = byUid(after);
    Array delta;
    std::unordered_set<std::string_view> deleted;
    for (const Value& record : before) {
        const std::string_view uid = uidOf(record);
        if (!areSame(known, next, uid) && deleted.insert(uid).second) {
            delta.append(Dictionary{{keys::uid, uid}, {keys::del, true}});
        }
    }
    for (const Value& record : after) {
        if (!areSame(known, next, uidOf(record))) {
            delta.append(record);
        }
    }
    return delta;
}

} // namespace plenzo
