#pragma once

#include "host/agent_push.h"
#include "host/command_line.h"
#include "host/commands/command_execution.h"
#include "host/configuration.h"
#include "host/sent_events.h"

#include <set>
#include <string>

namespace sdbus {
class IConnection;
}

namespace plenzo {

class AgentLink;

/// The running program: reads the calendars and sends the agent all of them when the program
/// starts, whenever the agent announces itself and at midnight, and what has changed when files
/// change. Says so on standard output. Carries out the commands that come back.
class Host : private CommandWorld {
public:
    explicit Host(HostOptions options);

    /// Writes what would be sent to standard output. False when that fails.
    bool dump();

    /// Serves until a termination signal; the program's exit status.
    int serve();

private:
    const CalendarSet& calendars() override { return m_calendars; }
    const Configuration& configuration() override { return m_configuration; }
    std::string configurationPath() override;
    SystemSeconds now() override;
    CalendarZone zone() override { return m_options.zone; }
    std::string zoneName() override { return m_options.zoneName; }

    /// Serves as the only host on the bus.
    int serveOn(sdbus::IConnection& connection);
    void pushTo(AgentLink& link);
    void pushChangesTo(AgentLink& link);
    [[nodiscard]] std::vector<std::string> watchedPaths() const;
    AgentPush currentPush();
    void addWeatherTo(Dictionary& everything);
    void readConfiguration();
    void report(const std::string& problem);

    HostOptions m_options;
    CalendarSet m_calendars;
    SentEvents m_sentEvents;
    Array m_sentSourceList;
    Configuration m_configuration;
    std::set<std::string> m_reported; // each problem is named once
};

} // namespace plenzo
