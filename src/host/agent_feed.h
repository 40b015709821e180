#pragma once

#include "host/agent_link.h"
#include "host/agent_push.h"
#include "propertylist/array.h"
#include "propertylist/dictionary.h"

#include <functional>
#include <string>
#include <utility>

namespace plenzo {

/// Keeps the agent up with what the host knows: sends everything, and after that what differs. Says
/// so on standard output.
class AgentFeed {
public:
    /// `report` is told when the agent cannot be reached.
    explicit AgentFeed(std::function<void(const std::string& problem)> report)
        : m_report(std::move(report)) {}

    void pushAll(AgentLink& link, const AgentPush& push);

    /// Whether a delta was lost, so that it takes everything to be up to date again.
    [[nodiscard]] bool lacksChanges() const { return m_agentKnows == AgentKnows::OldEvents; }

    /// Nothing is sent before everything was.
    void pushChanges(AgentLink& link, const Dictionary& preferences, const Array& sourceList,
                     const Array& delta);

private:
    /// Whether the agent knows all events but those that have just changed.
    enum class AgentKnows { Nothing, OldEvents, Events };

    void pushPreferences(AgentLink& link, const Dictionary& preferences);
    void pushSourceList(AgentLink& link, const Array& sourceList);
    void pushDelta(AgentLink& link, const Array& delta);
    void reportUnreachable() const { m_report("the agent could not be reached"); }

    std::function<void(const std::string& problem)> m_report;
    AgentKnows m_agentKnows = AgentKnows::Nothing;
    Dictionary m_sentPreferences;
    Array m_sentSourceList;
};

} // namespace plenzo
