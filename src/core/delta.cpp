#include "core/delta.h"

namespace plenzo {

namespace {

bool holds(const Delta::UIDs& uids, const Dictionary& eventDict) {
    const auto uid = eventDict.stringForKey(keys::uid);
    return uid && uids.contains(*uid);
}

} // namespace

Delta::Delta(const std::vector<EventDict>& eventDicts) {
    for (const EventDict& eventDict : eventDicts) {
        if (const auto uid = eventDict->stringForKey(keys::uid)) {
            (isDeletionNotice(*eventDict) ? m_deleted : m_kept).insert(*uid);
        }
    }
}

bool Delta::isTrueDeletion(const Dictionary& eventDict) const {
    return isDeletionNotice(eventDict) && !holds(m_kept, eventDict);
}

bool Delta::isReplacement(const Dictionary& eventDict) const {
    return !isDeletionNotice(eventDict) && holds(m_deleted, eventDict);
}

} // namespace plenzo
