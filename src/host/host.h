#pragma once

#include "host/agent_push.h"
#include "host/command_line.h"
#include "host/configuration.h"
#include "host/store/agent_events.h"
#include "host/store/calendar_store.h"

#include <set>
#include <string>
#include <vector>

namespace plenzo {

class AgentLink;

/// The running program: reads the calendars and sends the agent all of them when the program
/// starts, whenever the agent announces itself and at midnight, and what has changed when files
/// change. Says so on standard output.
class Host {
public:
    explicit Host(HostOptions options);

    /// Writes what would be sent to standard output. False when that fails.
    bool dump();

    /// Serves until a termination signal; the program's exit status.
    int serve();

private:
    /// Whether the agent knows all events but those that have just changed.
    enum class AgentKnows { Nothing, OldEvents, Events };

    void refresh(const PathChanges& changes);
    void pushTo(AgentLink& link);
    void pushChangesTo(AgentLink& link, const PathChanges& changes);
    void pushPreferencesTo(AgentLink& link);
    void pushSourceListTo(AgentLink& link);
    void pushDeltaTo(AgentLink& link);
    [[nodiscard]] AgentPush currentPush() const;
    [[nodiscard]] std::vector<std::string> watchedPaths() const;
    [[nodiscard]] std::vector<CalendarSource> sources() const;
    void readConfiguration();
    SystemSeconds now() const;
    void report(const std::string& problem);

    HostOptions m_options;
    Configuration m_configuration;
    CalendarStore m_store;
    AgentEvents m_events;
    RecordChanges m_changes; // of the last refresh
    AgentKnows m_agentKnows = AgentKnows::Nothing;
    Dictionary m_sentPreferences;
    Array m_sentSourceList;
    std::set<std::string> m_reported; // each problem is named once
};

} // namespace plenzo
