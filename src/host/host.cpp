#include "host/host.h"

#include "host/agent_link.h"
#include "host/commands/command_desk.h"
#include "host/commands/command_service.h"
#include "host/configuration/configured_calendars.h"
#include "host/files/file_paths.h"
#include "host/ical/zone_table.h"
#include "host/records/event_delta.h"
#include "host/store/calendar_watch.h"
#include "host/system_zone_watch.h"
#include "host/weather/weather_feed.h"
#include "host/weather/weather_file.h"
#include "propertylist/binary_property_list.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <utility>

namespace plenzo {

namespace {

const PathChanges anything{true, {}};

std::unique_ptr<sdbus::IConnection> sessionBus(std::string& error) {
    try {
        return sdbus::createSessionBusConnection();
    } catch (const sdbus::Error& problem) {
        error = problem.getMessage();
        return nullptr;
    }
}

/// As if the configuration named them.
std::vector<ConfiguredCalendar> calendarsAt(const std::vector<std::string>& paths) {
    std::vector<ConfiguredCalendar> calendars(paths.size());
    std::transform(paths.begin(), paths.end(), calendars.begin(), [](const std::string& path) {
        ConfiguredCalendar calendar;
        calendar.path = absolutePath(path);
        return calendar;
    });
    return calendars;
}

} // namespace

Host::Host(HostOptions options)
    : m_options(std::move(options)), m_localEdits(m_files, localEditsPath(), m_options.zone),
      m_store(m_localEdits), m_feed([this](const std::string& problem) { report(problem); }) {}

/// Paths on the command line take the place of the calendars that are configured.
void Host::readConfiguration() {
    const SteadyTime now = steadyTime();
    if (m_configurationGrace.bears(configurationFile(), now)) {
        m_configurationLook.expireIn(static_cast<int>((*m_configurationGrace.end() - now).count()));
        return;
    }
    const std::string path = configurationPath(m_options.configurationPath);
    m_configuration = path.empty() ? defaultConfiguration() : loadConfiguration(path);
    for (const ConfigurationProblem& problem : m_configuration.problems) {
        report(problemText(path, problem));
    }
    if (!m_options.paths.empty()) {
        m_configuration.calendars = calendarsAt(m_options.paths);
    } else if (m_configuration.calendars.empty()) {
        report("there are no calendars: name files, or put them into " +
               (path.empty() ? defaultConfigurationPath() : path));
    }
}

bool Host::dump() {
    reportDamaged(m_localEdits.load());
    refresh(anything);
    Dictionary everything = pushAsDictionary(currentPush());
    addWeatherTo(everything);
    const auto bytes = writeBinaryPropertyList(everything);
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    return !bytes.empty() && isWritten && std::fflush(stdout) == 0;
}

void Host::addWeatherTo(Dictionary& everything) {
    const std::string& path = m_configuration.weatherFile;
    if (path.empty()) {
        return;
    }
    const WeatherReading weather = loadWeather(path, m_options.zone);
    for (const ConfigurationProblem& problem : weather.problems) {
        report(problemText(path, problem));
    }
    everything.set(Key("weather"), weather.record.value_or(Dictionary()));
}

int Host::serve() {
    std::string error;
    const auto connection = sessionBus(error);
    if (!connection) {
        report("there is no session bus: " + error);
        return 1;
    }
    if (handOver(*connection)) {
        return 0;
    }
    HostLoop::blockTerminationSignals(); // whoever sees the name on the bus may end the program
    CommandDesk commands(*this, m_files, m_localEdits, *connection);
    if (!commands.takeName()) {
        if (handOver(*connection)) { // to one that started at the same moment
            return 0;
        }
        report("another plenzohost is already running");
        return 1;
    }
    reportDamaged(m_localEdits.load());
    reportDamaged(commands.load());
    readConfiguration(); // which names what is to be watched
    LoopEnd end = LoopEnd::Asked;
    while (end == LoopEnd::Asked) {
        end = serveOn(*connection, commands);
    }
    if (end == LoopEnd::BusGone) {
        report("the session bus has gone");
    }
    return end == LoopEnd::Terminated ? 0 : 1;
}

/// Whether another host takes the commands of the command line.
bool Host::handOver(sdbus::IConnection& connection) const {
    return !m_options.commandUrls.empty() && sendToRunningHost(connection, m_options.commandUrls);
}

LoopEnd Host::serveOn(sdbus::IConnection& connection, CommandDesk& commands) {
    HostLoop loop;
    std::unique_ptr<AgentLink> link;
    WeatherFeed weather(loop, m_options.zone,
                        {[&](const Dictionary& record) { link->pushWeather(record); },
                         [this](const std::string& problem) { report(problem); }});
    const auto pushAll = [&] {
        pushTo(*link);
        weather.sendAll(m_configuration.weatherFile);
    };
    const auto pushChanges = [&](const PathChanges& changes) {
        pushChangesTo(*link, changes);
        weather.sendChanges(m_configuration.weatherFile);
        commands.queue().tryAgain();
    };
    link = std::make_unique<AgentLink>(connection, agentListener(pushAll));
    // Before the calendars and the weather are read, so that no change is missed.
    const CalendarWatch watch(loop, [this] { return watchedPaths(); }, m_options.zone,
                              {.calendarsChanged = pushChanges, .dayChanged = pushAll});
    loop.watch(commands.queue().descriptor(), [&] {
        commands.queue().noteRetry();
        pushChanges(anything); // not every file system tells of its changes
    });
    loop.watch(m_store.bearWithAbsentFiles(), [&] { pushChanges({}); });
    loop.watch(m_configurationLook.descriptor(), [&] {
        m_configurationLook.acknowledge();
        pushChanges({});
    });
    loop.watch(m_ownChange.descriptor(), [&] {
        m_ownChange.acknowledge();
        pushChanges(std::exchange(m_ownChanges, {}));
    });
    if (link->isAgentPresent()) {
        pushAll();
    } else {
        refresh(anything);
        link->startAgent();
    }
    commands.begin(std::exchange(m_options.commandUrls, {}));
    SystemZoneWatch zone;
    loop.watch(zone.descriptor(), [&] {
        const auto name = zone.readChange();
        if (name && m_options.followsSystemZone && followZone(*name)) {
            loop.end();
        }
    });
    return loop.run(connection);
}

/// The zone is in everything that serves; false when there are no rules of it.
bool Host::followZone(const std::string& name) {
    const auto zone = systemZoneNamed(name);
    if (!zone) {
        return false;
    }
    m_options.zone = CalendarZone(*zone);
    m_options.zoneName = name;
    m_localEdits.setZone(m_options.zone);
    m_events = {};
    return true;
}

AgentLink::Listener Host::agentListener(std::function<void()> launched) {
    return {std::move(launched), [this] { report("the agent that runs is of another version"); },
            [this](const std::string& reason) {
                report("the agent could not be started, waiting for it: " + reason);
            }};
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
    refresh(anything);
    m_feed.pushAll(link, currentPush());
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
    if (m_feed.lacksChanges()) {
        pushTo(link);
        return;
    }
    refresh(changes);
    const RecordChanges changed = std::exchange(m_changes, {});
    m_feed.pushChanges(link, m_configuration.preferences,
                       sourceListOf(m_store.calendars().calendars),
                       eventDelta(changed.before, changed.after));
}

std::string Host::configurationFile() {
    return m_options.configurationPath.empty() ? defaultConfigurationPath()
                                               : m_options.configurationPath;
}

void Host::noteEdit(const std::string& calendarFile) {
    m_ownChanges.paths.insert(absolutePath(calendarFile));
    m_store.noteWritten(calendarFile);
    m_ownChange.expireIn(1);
}

SystemSeconds Host::now() {
    return m_options.fixedNow.value_or(
        std::chrono::time_point_cast<cctz::seconds>(std::chrono::system_clock::now()));
}

void Host::reportDamaged(const std::string& setAside) {
    if (!setAside.empty()) {
        report("what was remembered is damaged and cannot be used: " + setAside);
    }
}

void Host::report(const std::string& problem) {
    if (m_reported.insert(problem).second) {
        std::cerr << "plenzohost: " << problem << '\n';
    }
}

} // namespace plenzo
