#pragma once

#include "propertylist/dictionary.h"

#include <string_view>

namespace plenzo {

/// The six operations that the host calls. They arrive on the main loop, in the order in which the
/// host sent them; none has a reply.
class PlenzoAlarmProtocol {
public:
    PlenzoAlarmProtocol() = default;
    PlenzoAlarmProtocol(const PlenzoAlarmProtocol&) = delete;
    PlenzoAlarmProtocol& operator=(const PlenzoAlarmProtocol&) = delete;
    virtual ~PlenzoAlarmProtocol() = default;

    /// The host's idea of the agent's version; empty when it sent none.
    virtual void version(std::string_view version) = 0;
    /// A batch of event dictionaries: a full update, or with `delta` deletion notices and records.
    virtual void alarmsUpdated(Array eventDicts, bool delta) = 0;
    /// The calendars: an array of source-list nodes.
    virtual void sourceListUpdated(const Array& sourceNodes) = 0;
    /// Preference keys with their new values.
    virtual void prefsUpdated(const Dictionary& preferences) = 0;
    /// The weather record.
    virtual void weatherUpdated(const Dictionary& weather) = 0;
    /// The host is about to stop the agent.
    virtual void prepareToStop() = 0;
};

/// The listener that the host connects to.
class HostLink {
public:
    HostLink() = default;
    HostLink(const HostLink&) = delete;
    HostLink& operator=(const HostLink&) = delete;
    virtual ~HostLink() = default;

    /// From now on what the host sends, or has sent since the program started, goes to `exported`,
    /// which must live until close().
    virtual void open(PlenzoAlarmProtocol& exported) = 0;
    /// Nothing more reaches the exported object.
    virtual void close() = 0;
};

} // namespace plenzo
