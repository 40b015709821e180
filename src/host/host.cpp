#include "host/host.h"

#include "host/agent_link.h"
#include "host/calendar_watch.h"
#include "host/configured_calendars.h"
#include "host/event_delta.h"
#include "host/host_loop.h"
#include "propertylist/binary_property_list.h"

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>

namespace plenzo {

namespace {

const PathChanges everything{true, {}};

std::unique_ptr<sdbus::IConnection> sessionBus(std::string& error) {
    try {
        return sdbus::createSessionBusConnection();
    } catch (const sdbus::Error& problem) {
        error = problem.getMessage();
        return nullptr;
    }
}

} // namespace

Host::Host(HostOptions options) : m_options(std::move(options)) {
    readConfiguration();
}

/// Paths on the command line take the place of the calendars that are configured.
void Host::readConfiguration() {
    const std::string path = configurationPath(m_options.configurationPath);
    m_configuration = path.empty() ? defaultConfiguration() : loadConfiguration(path);
    for (const ConfigurationProblem& problem : m_configuration.problems) {
        report(problemText(path, problem));
    }
    if (!m_options.paths.empty()) {
        m_configuration.calendars.clear();
    } else if (m_configuration.calendars.empty()) {
        report("there are no calendars: name files, or put them into " +
               (path.empty() ? defaultConfigurationPath() : path));
    }
}

bool Host::dump() {
    refresh(everything);
    const auto bytes = writeBinaryPropertyList(pushAsDictionary(currentPush()));
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    return !bytes.empty() && isWritten && std::fflush(stdout) == 0;
}

int Host::serve() {
    HostLoop loop;
    std::string error;
    const auto connection = sessionBus(error);
    if (!connection) {
        report("there is no session bus: " + error);
        return 1;
    }
    std::unique_ptr<AgentLink> link;
    const auto pushAll = [&] { pushTo(*link); };
    const auto reportOtherVersion = [this] { report("the agent that runs is of another version"); };
    const auto reportNoStart = [this](const std::string& reason) {
        report("the agent could not be started, waiting for it: " + reason);
    };
    link = std::make_unique<AgentLink>(
        *connection, AgentLink::Listener{pushAll, reportOtherVersion, reportNoStart});
    const CalendarWatch watch(
        loop, [this] { return watchedPaths(); }, m_options.zone,
        {.calendarsChanged = [&](const PathChanges& changes) { pushChangesTo(*link, changes); },
         .dayChanged = pushAll});
    if (link->isAgentPresent()) {
        pushAll();
    } else {
        link->startAgent();
    }
    if (loop.run(*connection) == LoopEnd::Terminated) {
        return 0;
    }
    report("the session bus has gone");
    return 1;
}

/// Brings everything up to date with the files. The configuration is small and read each time.
void Host::refresh(const PathChanges& changes) {
    readConfiguration();
    m_store.setSources(sources());
    m_store.update(changes);
    m_changes = m_events.update(m_store.calendars(),
                                expansionWindow(now(), m_options.days, m_options.zone));
    for (const std::string& problem : m_store.calendars().problems) {
        report(problem);
    }
    for (const std::string& problem : m_changes.problems) {
        report(problem);
    }
}

AgentPush Host::currentPush() const {
    return {m_configuration.preferences, sourceListOf(m_store.calendars().calendars),
            m_events.all()};
}

void Host::pushTo(AgentLink& link) {
    refresh(everything);
    const AgentPush push = currentPush();
    if (!link.push(push)) {
        report("the agent could not be reached");
        return;
    }
    m_agentKnows = AgentKnows::Events;
    m_sentPreferences = push.preferences;
    m_sentSourceList = push.sourceList;
    std::cout << "plenzohost: " << push.events.size() << " events handed to the agent"
              << std::endl; // Who reads this through a pipe waits for it.
}

/// Where calendars are, or may come to be.
std::vector<std::string> Host::watchedPaths() const {
    std::vector<std::string> paths = m_options.paths;
    const std::string& named = m_options.configurationPath;
    for (const std::string& path :
         {named.empty() ? defaultConfigurationPath() : named, defaultCalendarFolder()}) {
        if (!path.empty()) {
            paths.push_back(path);
        }
    }
    for (const ConfiguredCalendar& calendar : m_configuration.calendars) {
        paths.push_back(calendar.path);
    }
    return paths;
}

std::vector<CalendarSource> Host::sources() const {
    return m_options.paths.empty() ? configuredSources(m_configuration)
                                   : std::vector<CalendarSource>{{m_options.paths, {}, {}, false}};
}

void Host::pushChangesTo(AgentLink& link, const PathChanges& changes) {
    if (m_agentKnows == AgentKnows::OldEvents) {
        pushTo(link);
        return;
    }
    refresh(changes);
    if (m_agentKnows == AgentKnows::Nothing) {
        return; // it is told everything when it announces itself
    }
    pushPreferencesTo(link);
    pushSourceListTo(link);
    pushDeltaTo(link);
}

void Host::pushPreferencesTo(AgentLink& link) {
    if (!(m_sentPreferences == m_configuration.preferences)) {
        link.pushPreferences(m_configuration.preferences);
        m_sentPreferences = m_configuration.preferences;
    }
}

void Host::pushSourceListTo(AgentLink& link) {
    const Array sourceList = sourceListOf(m_store.calendars().calendars);
    if (!(sourceList == m_sentSourceList) && link.pushSourceList(sourceList)) {
        m_sentSourceList = sourceList;
    }
}

void Host::pushDeltaTo(AgentLink& link) {
    const Array delta = eventDelta(m_changes.before, m_changes.after);
    m_changes = {};
    if (delta.empty()) {
        return;
    }
    if (!link.pushDelta(delta)) {
        m_agentKnows = AgentKnows::OldEvents;
        report("the agent could not be reached");
        return;
    }
    std::cout << "plenzohost: " << delta.size() << " changes handed to the agent" << std::endl;
}

SystemSeconds Host::now() const {
    return m_options.fixedNow.value_or(
        std::chrono::time_point_cast<cctz::seconds>(std::chrono::system_clock::now()));
}

void Host::report(const std::string& problem) {
    if (m_reported.insert(problem).second) {
        std::cerr << "plenzohost: " << problem << '\n';
    }
}

} // namespace plenzo
