#include "host/host.h"

#include "host/agent_link.h"
#include "host/calendar_watch.h"
#include "host/host_loop.h"
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

Host::Host(HostOptions options) : m_options(std::move(options)) {}

bool Host::dump() {
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
    if (link->isAgentPresent()) {
        pushAll();
    } else {
        link->startAgent();
    }
    const CalendarWatch watch(
        loop, m_options.paths, m_options.zone,
        {.calendarsChanged = [&] { pushChangesTo(*link); }, .dayChanged = pushAll});
    if (loop.run(*connection) == LoopEnd::Terminated) {
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

void Host::pushChangesTo(AgentLink& link) {
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
    AgentPush push = agentPush(loadCalendars(m_options.paths), window);
    for (const std::string& problem : push.problems) {
        report(problem);
    }
    return push;
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
