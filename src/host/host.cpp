#include "host/host.h"

#include "host/agent_link.h"
#include "host/calendar_watch.h"
#include "host/commands/command_queue.h"
#include "host/commands/command_service.h"
#include "host/commands/desktop_presentation.h"
#include "host/commands/notice_sender.h"
#include "host/configured_calendars.h"
#include "host/host_loop.h"
#include "host/weather_feed.h"
#include "host/weather_file.h"
#include "propertylist/binary_property_list.h"

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>

namespace plenzo {

namespace {

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
    const std::string& path = m_options.configurationPath;
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
    if (!m_options.commandUrls.empty() && sendToRunningHost(*connection, m_options.commandUrls)) {
        return 0;
    }
    return serveOn(*connection);
}

int Host::serveOn(sdbus::IConnection& connection) {
    HostLoop loop;
    NoticeSender notices(connection);
    const auto notify = [&notices](const Notice& notice) { notices.send(notice); };
    FileReplacementOnDisk files;
    PendingCommands pending(files, pendingCommandsPath());
    DesktopPresentation presentation(pageFolderOfUser(), notify);
    CommandExecution execution(*this, files, presentation);
    UserMessages messages(notify);
    CommandQueue commands(*this, execution, pending, messages);
    CommandService service(connection, [&commands](const auto& url, const auto& token) {
        commands.receive(url, token);
    });
    if (!service.takeName()) {
        report("another plenzohost is already running");
        return 1;
    }

    std::unique_ptr<AgentLink> link;
    WeatherFeed weather(loop, m_options.zone,
                        {[&](const Dictionary& record) { link->pushWeather(record); },
                         [this](const std::string& problem) { report(problem); }});
    const auto pushAll = [&] {
        pushTo(*link);
        weather.sendAll(m_configuration.weatherFile);
    };
    const auto pushChanges = [&] {
        pushChangesTo(*link);
        weather.sendChanges(m_configuration.weatherFile);
        commands.tryAgain();
    };
    const auto reportOtherVersion = [this] { report("the agent that runs is of another version"); };
    const auto reportNoStart = [this](const std::string& reason) {
        report("the agent could not be started, waiting for it: " + reason);
    };
    link = std::make_unique<AgentLink>(
        connection, AgentLink::Listener{pushAll, reportOtherVersion, reportNoStart});
    // Before the calendars and the weather are read, so that no change is missed.
    const CalendarWatch watch(loop, [this] { return watchedPaths(); }, m_options.zone,
                              {.calendarsChanged = pushChanges, .dayChanged = pushAll});
    if (link->isAgentPresent()) {
        pushAll();
    } else {
        link->startAgent();
    }
    loop.watch(commands.descriptor(), [&commands] { commands.retry(); });
    commands.tryAgain();
    for (const std::string& url : m_options.commandUrls) {
        commands.receive(url, {});
    }
    if (loop.run(connection) == LoopEnd::Terminated) {
        return 0;
    }
    report("the session bus has gone");
    return 1;
}

void Host::pushTo(AgentLink& link) {
    const AgentPush push = currentPush();
    if (!link.push(push)) {
        report("the agent could not be reached");
        return;
    }
    m_sentEvents.reset(push.events);
    m_sentSourceList = push.sourceList;
    std::cout << "plenzohost: " << push.events.size() << " events handed to the agent"
              << std::endl; // Who reads this through a pipe waits for it.
}

std::vector<std::string> Host::watchedPaths() const {
    std::vector<std::string> paths = m_options.paths;
    if (!m_options.configurationPath.empty()) {
        paths.push_back(m_options.configurationPath);
    }
    for (const ConfiguredCalendar& calendar : m_configuration.calendars) {
        paths.push_back(calendar.path);
    }
    return paths;
}

void Host::pushChangesTo(AgentLink& link) {
    const Dictionary sentPreferences = m_configuration.preferences;
    readConfiguration();
    if (!(Value(sentPreferences) == Value(m_configuration.preferences))) {
        link.pushPreferences(m_configuration.preferences);
    }
    const AgentPush push = currentPush();
    if (!(Value(push.sourceList) == Value(m_sentSourceList)) &&
        link.pushSourceList(push.sourceList)) {
        m_sentSourceList = push.sourceList;
    }
    const Array delta = m_sentEvents.deltaTo(push.events);
    if (delta.empty()) {
        return;
    }
    if (!link.pushDelta(delta)) {
        report("the agent could not be reached");
        return;
    }
    std::cout << "plenzohost: " << delta.size() << " changes handed to the agent" << std::endl;
}

AgentPush Host::currentPush() {
    const ExpansionWindow window = expansionWindow(now(), m_options.days, m_options.zone);
    m_calendars = m_options.paths.empty() ? loadConfiguredCalendars(m_configuration)
                                          : loadCalendars(m_options.paths);
    AgentPush push = agentPush(m_calendars, window);
    push.preferences = m_configuration.preferences;
    for (const std::string& problem : push.problems) {
        report(problem);
    }
    return push;
}

std::string Host::configurationPath() {
    return m_options.configurationPath.empty() ? defaultConfigurationPath()
                                               : m_options.configurationPath;
}

SystemSeconds Host::now() {
    return m_options.fixedNow.value_or(
        std::chrono::time_point_cast<cctz::seconds>(std::chrono::system_clock::now()));
}

void Host::report(const std::string& problem) {
    if (m_reported.insert(problem).second) {
        std::cerr << "plenzohost: " << problem << '\n';
    }
}

} // namespace plenzo
