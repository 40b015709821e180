#include "core/cancellation.h"

#include "model/occurrence_date.h"
#include "propertylist/array.h"
#include "propertylist/known_keys.h"

namespace plenzo {

namespace {

/// The first entry of "rem" with the "uid", or null.
const Dictionary* reminderEntry(const Dictionary& eventDict, std::string_view reminderUID) {
    const Array* reminders = eventDict.arrayForKey(keys::rem);
    if (reminders == nullptr) {
        return nullptr;
    }
    for (const Value& reminder : *reminders) {
        const Dictionary* entry = reminder.dictionary();
        if (entry != nullptr && entry->stringForKey(keys::uid) == reminderUID) {
            return entry;
        }
    }
    return nullptr;
}

} // namespace

bool reminderIsCanceled(const Dictionary& eventDict, std::optional<std::string_view> reminderUID,
                        Instant since) {
    const Dictionary* entry = reminderUID ? reminderEntry(eventDict, *reminderUID) : nullptr;
    return entry == nullptr || isNewerThan(readableInstant(entry->find(keys::ack)), since);
}

} // namespace plenzo
