#pragma once

// The names of the dictionary keys that records are read by: the one place to add such a key.
// Each row makes a constant `keys::IDENTIFIER` and costs no memory in the dictionaries that use it.

#include <cstddef>
#include <cstdint>
#include <string_view>

#define PLENZO_KNOWN_KEYS(KEY)                                                                     \
    /* Event dictionary, reminder entry, source-list node */                                       \
    KEY(uid, "uid")                                                                                \
    KEY(del, "del")                                                                                \
    KEY(type, "type")                                                                              \
    KEY(title, "title")                                                                            \
    KEY(location, "location")                                                                      \
    KEY(notes, "notes")                                                                            \
    KEY(url, "url")                                                                                \
    KEY(date, "date")                                                                              \
    KEY(end, "end")                                                                                \
    KEY(allDay, "allDay")                                                                          \
    KEY(floating, "floating")                                                                      \
    KEY(carry, "carry")                                                                            \
    KEY(completed, "completed")                                                                    \
    KEY(completionDate, "completionDate")                                                          \
    KEY(priority, "priority")                                                                      \
    KEY(holiday, "holiday")                                                                        \
    KEY(birthday, "birthday")                                                                      \
    KEY(anniversary, "anniversary")                                                                \
    KEY(read, "read")                                                                              \
    KEY(cuid, "cuid")                                                                              \
    KEY(cal, "cal")                                                                                \
    KEY(colInt, "colInt")                                                                          \
    KEY(rem, "rem")                                                                                \
    KEY(repeat, "repeat")                                                                          \
    KEY(tags, "tags")                                                                              \
    KEY(attendees, "attendees")                                                                    \
    KEY(abs, "abs")                                                                                \
    KEY(rel, "rel")                                                                                \
    KEY(ack, "ack")                                                                                \
    KEY(book, "book")                                                                              \
    KEY(to, "to")                                                                                  \
    KEY(email, "email")                                                                            \
    KEY(header, "header")                                                                          \
    KEY(children, "children")                                                                      \
    KEY(visible, "visible")                                                                        \
    /* Keys that the agent adds to its own copies, and those of the alarm window's rows */         \
    KEY(color, "color")                                                                            \
    KEY(alarm, "alarm")                                                                            \
    KEY(calendar, "calendar")                                                                      \
    KEY(readOnly, "readOnly")                                                                      \
    KEY(done, "done")                                                                              \
    KEY(lastRow, "lastRow")                                                                        \
    /* The older reminder form */                                                                  \
    KEY(reminderType, "reminderType")                                                              \
    KEY(relativeSeconds, "relativeSeconds")                                                        \
    KEY(absoluteTime, "absoluteTime")                                                              \
    KEY(note, "note")                                                                              \
    KEY(recipients, "recipients")                                                                  \
    KEY(xProps, "xProps")                                                                          \
    /* The persisted form of an alarm */                                                           \
    KEY(fireDate, "fireDate")                                                                      \
    KEY(eventDict, "eventDict")                                                                    \
    KEY(reminderDict, "reminderDict")                                                              \
    /* The user information of a notification */                                                   \
    KEY(eventUidPlusDay, "event uid+day")                                                          \
    KEY(notificationReminderUid, "reminder uid")                                                   \
    KEY(eventTime, "event time")                                                                   \
    /* The inspector's rows */                                                                     \
    KEY(fireDay, "fireDay")                                                                        \
    KEY(reminderUid, "reminderUid")                                                                \
    /* The weather record */                                                                       \
    KEY(forecast, "forecast")                                                                      \
    KEY(icon, "icon")                                                                              \
    KEY(high, "high")                                                                              \
    KEY(low, "low")                                                                                \
    KEY(text, "text")

namespace plenzo {

/// A key's text. Known names live in `knownKeyNames`; the others are the head of a counted block.
struct KeyName {
    const char* characters;
    std::uint32_t length;

    constexpr std::string_view text() const { return {characters, length}; }
};

#define PLENZO_KEY_NAME(identifier, name) KeyName{name, sizeof(name) - 1},
inline constexpr KeyName knownKeyNames[] = {PLENZO_KNOWN_KEYS(PLENZO_KEY_NAME)};
#undef PLENZO_KEY_NAME

inline constexpr std::size_t knownKeyCount = sizeof(knownKeyNames) / sizeof(knownKeyNames[0]);

/// The entry of `knownKeyNames` with this name, or null. Allocates nothing.
const KeyName* knownKeyName(std::string_view name);

} // namespace plenzo
