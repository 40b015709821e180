#pragma once

#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <string>
#include <unordered_map>

namespace plenzo {

/// What the agent has been told of events, and what it takes to bring it up to date.
class SentEvents {
public:
    /// All that the agent knows is these.
    void reset(const Array& events);

    /// What turns the events that the agent knows into these: a deletion notice for each "uid" that
    /// is gone or has changed, then the records that are new or have changed, in their order. From
    /// now on the agent knows these.
    [[nodiscard]] Array deltaTo(const Array& events);

private:
    /// The records of a "uid", which is one unless a calendar has it twice.
    using ByUid = std::unordered_map<std::string, Array>;

    static ByUid byUid(const Array& events);

    Array m_events;
    ByUid m_byUid;
};

} // namespace plenzo
