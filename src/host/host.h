#pragma once

#include "host/agent_push.h"
#include "host/command_line.h"
#include "host/configuration.h"
#include "host/sent_events.h"

#include <set>
#include <string>

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
    void pushTo(AgentLink& link);
    void pushChangesTo(AgentLink& link);
    [[nodiscard]] std::vector<std::string> watchedPaths() const;
    AgentPush currentPush();
    void addWeatherTo(Dictionary& everything);
    void readConfiguration();
    SystemSeconds now() const;
    void report(const std::string& problem);

    HostOptions m_options;
    SentEvents m_sentEvents;
    Array m_sentSourceList;
    Configuration m_configuration;
    std::set<std::string> m_reported; // each problem is named once
};

} // namespace plenzo
