#pragma once

#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <memory>

namespace plenzo {

/// The host's record of one occurrence of an event or to-do, in the agent's own copy. It is one
/// record under all of its alarms and rows: what one changes in it, all see. Null stands for none.
///
/// Keys that are read here (all others are kept): "uid" the identity of the occurrence, "del" a
/// deletion notice when present, "type" 0 event or 1 to-do, "title", "location", "notes",
/// "date"/"end"/"completionDate" dates, "allDay" and "floating" (the date's fields read in UTC are
/// the local ones), "carry", "rem" the array of reminder entries, "colInt" the packed colour and
/// "color" the colour made of it.
using EventDict = std::shared_ptr<Dictionary>;

/// Whether the dictionary only announces that the occurrence with its "uid" is gone.
[[nodiscard]] inline bool isDeletionNotice(const Dictionary& eventDict) {
    return eventDict.contains(keys::del);
}

/// "type" of a reminder entry: what happens when its alarm fires.
enum class ReminderType : std::int64_t {
    Display = 0,
    Sound = 1,
    Mail = 2,
    NoAction = 3,
    Open = 4,
    Proximity = 10,
};

/// The type that the value under "type" of a reminder entry stands for. May be a number without a
/// name here.
[[nodiscard]] inline ReminderType reminderType(const Value& type) {
    return static_cast<ReminderType>(type.integerValue());
}

/// The reminder entry's "type"; an absent one is Display.
[[nodiscard]] ReminderType reminderType(const Dictionary& reminderDict);

/// The colour of a packed integer: red in bits 16 to 23, green in 8 to 15, blue in 0 to 7, opaque.
[[nodiscard]] Color colorFromPackedInteger(std::int64_t packed);

} // namespace plenzo
