#pragma once

#include "core/event_collection.h"
#include "platform/files.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace plenzo {

/// What the host last pushed, kept in the agent's folder from the end of the session until the next
/// launch: "Reminders.plist" the event dictionaries, "Calendars.plist" the source-list nodes,
/// "Weather.plist" the weather record, all binary property lists without colours. The modification
/// date of the first is the moment until which alarms had been fired. "Mail.plist" holds those of
/// these alarms whose mail was not yet out; it is only there when there are any.
///
/// The files are saved together or not at all, whatever interrupts the saving: they are written
/// into a folder of their own, whose renaming decides, and from there moved to their places.
class SavedState {
public:
    /// The folder is the agent's own.
    SavedState(Files& files, std::string folder) : m_files(files), m_folder(std::move(folder)) {}

    struct Contents {
        std::span<const EventDict> eventDicts;
        const Array& sourceListNodes;
        /// Empty when there is none; then none is written.
        const Dictionary& weather;
        /// In their persisted form. Without any none are written.
        const Array& mailAlarms;
        Instant issueTime;
    };
    /// Replaces what is saved. False when that failed; what was there before is then unchanged.
    bool save(const Contents& contents);
    void discard();
    void discardMail();

    struct Steps {
        std::function<void(Array eventDicts, Instant issueTime)> restoreEvents;
        std::function<void(Array sourceListNodes)> restoreSourceList;
        std::function<void(Dictionary weather)> restoreWeather;
        std::function<void(Array mailAlarms)> restoreMail;
    };
    /// Hands on what was saved, and removes each file after its step, but that of mail before:
    /// rather no mail than the same again with every launch. A file that is no property list of its
    /// kind is left where it is.
    void restore(const Steps& steps);

private:
    [[nodiscard]] std::string path(const char* name) const { return m_folder + "/" + name; }
    bool stage(const char* name, const Value& contents);
    bool stageWeather(const Dictionary& weather);
    bool stageMail(const Array& mailAlarms);
    void restoreMail(const Steps& steps);
    bool replaceStaged(const char* name, std::span<const std::byte> bytes);
    [[nodiscard]] std::optional<Value> read(const char* name) const;
    void putInPlace();
    void putInPlace(const char* name);
    [[nodiscard]] bool isFinished(const char* name) const;

    Files& m_files;
    std::string m_folder;
};

} // namespace plenzo
