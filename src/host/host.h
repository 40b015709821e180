#pragma once

#include "host/agent_feed.h"
#include "host/command_line.h"
#include "host/commands/command_execution.h"
#include "host/commands/local_edits.h"
#include "host/configuration/configuration.h"
#include "host/configuration/configuration_grace.h"
#include "host/loop/host_loop.h"
#include "host/loop/one_shot_timer.h"
#include "host/store/agent_events.h"
#include "host/store/calendar_store.h"

#include <ctime>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace sdbus {
class IConnection;
}

namespace plenzo {

class CommandDesk;

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
    const CalendarSet& calendars() override { return m_store.calendars(); }
    const Configuration& configuration() override { return m_configuration; }
    std::string configurationFile() override;
    SystemSeconds now() override;
    CalendarZone zone() override { return m_options.zone; }
    std::string zoneName() override { return m_options.zoneName; }
    void noteEdit(const std::string& calendarFile) override;

    bool handOver(sdbus::IConnection& connection) const;
    /// Serves as the only host on the bus, in one time zone.
    LoopEnd serveOn(sdbus::IConnection& connection, CommandDesk& commands);
    bool followZone(const std::string& name);
    AgentLink::Listener agentListener(std::function<void()> launched);
    void refresh(const PathChanges& changes);
    void pushTo(AgentLink& link);
    void pushChangesTo(AgentLink& link, const PathChanges& changes);
    [[nodiscard]] AgentPush currentPush() const;
    [[nodiscard]] std::vector<std::string> watchedPaths() const;
    [[nodiscard]] std::vector<CalendarSource> sources() const;
    void addWeatherTo(Dictionary& everything);
    void readConfiguration();
    void reportDamaged(const std::string& setAside);
    void report(const std::string& problem);

    HostOptions m_options;
    Configuration m_configuration;
    ConfigurationGrace m_configurationGrace;
    OneShotTimer m_configurationLook{CLOCK_MONOTONIC};
    FileReplacementOnDisk m_files;
    LocalEdits m_localEdits;
    PathChanges m_ownChanges;
    OneShotTimer m_ownChange{CLOCK_MONOTONIC}; // a command is done before the agent is told
    CalendarStore m_store;
    AgentEvents m_events;
    RecordChanges m_changes; // of the last refresh
    AgentFeed m_feed;
    std::set<std::string> m_reported; // each problem is named once
};

} // namespace plenzo
