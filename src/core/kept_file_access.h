#pragma once

#include "core/record_walk.h"
#include "platform/clock.h"
#include "platform/file_access.h"
#include "platform/timers.h"

#include <cstddef>
#include <deque>
#include <set>
#include <span>
#include <string_view>

namespace plenzo {

/// The agent's own rights to the files of open-file reminders: kept when the record comes, used
/// when the alarm fires. Every file has to be looked at, so very many wait for their turn: the main
/// loop goes on in between.
class KeptFileAccess {
public:
    struct Collaborators {
        /// Null when files cannot be opened here; then nothing is kept.
        FileAccess* fileAccess;
        Timers& timers;
        const Clock& clock;
    };

    explicit KeptFileAccess(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// Notes the file of each open-file reminder with "book", the same one once. Skips null records
    /// and deletion notices. Of absurdly many, the last are left out.
    void saveSecureFileURLsIn(RecordGroup group);
    void saveSecureFileURLsInEventDict(const Dictionary& eventDict);
    /// Keeps the access to some of the files that were noted; to the others soon.
    void saveNext();
    /// Keeps the access to all of them, before the end of the session.
    void saveAll();
    /// Lets go of what is noted, as when its records are gone.
    void forgetNoted();

private:
    void note(const Value& transportData);
    void saveFirst(std::size_t count);
    void saveSecureFile(std::span<const std::byte> transportData) const;

    Collaborators m_collaborators;
    /// The references of the files, in their order, and the same to look them up.
    std::deque<Value> m_noted;
    std::set<std::string_view> m_notedData;
    Handle m_together;
    Handle m_next;
};

} // namespace plenzo
