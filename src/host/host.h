#pragma once

#include "host/agent_push.h"
#include "host/command_line.h"
#include "host/configuration.h"

#include <set>
#include <string>

namespace plenzo {

class AgentLink;

/// The running program: reads the calendars and sends the agent all of them when the program starts
/// and whenever the agent announces itself, and says so on standard output.
class Host {
public:
    explicit Host(HostOptions options);

    /// Writes what would be sent to standard output. False when that fails.
    bool dump();

    /// Serves until a termination signal; the program's exit status.
    int serve();

private:
    void pushTo(AgentLink& link);
    AgentPush currentPush();
    void readConfiguration();
    SystemSeconds now() const;
    void report(const std::string& problem);

    HostOptions m_options;
    Configuration m_configuration;
    std::set<std::string> m_reported; // each problem is named once
};

} // namespace plenzo
