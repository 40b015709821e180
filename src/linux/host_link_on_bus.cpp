#include "linux/host_link_on_bus.h"

#include "linux/agent_address.h"
#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_decoder.h"

#include <sdbus-c++/sdbus-c++.h>

#include <string>
#include <utility>

namespace plenzo {

namespace {

/// The operations are one-way, but a caller that waits for an answer all the same gets an empty one
/// rather than a time-out.
void answerIfExpected(const sdbus::MethodCall& call) {
    if (!call.doesntExpectReply()) {
        call.createReply().send();
    }
}

/// Empty when it cannot be read: the bus lets noncharacters through, the bus library does not.
std::string readText(sdbus::MethodCall& call) {
    std::string text;
    try {
        call >> text;
    } catch (const sdbus::Error&) {
        return {};
    }
    return text;
}

} // namespace

HostLinkOnBus::HostLinkOnBus(MainLoop& loop, BusThread& busThread)
    : m_loop(loop), m_busThread(busThread),
      m_object(sdbus::createObject(busThread.connection(), agentaddress::objectPath)) {
    registerOperations();
    m_object->finishRegistration();
}

void HostLinkOnBus::open(PlenzoAlarmProtocol& exported) {
    m_exported = &exported;
    m_busThread.start([this] { m_loop.post([this] { m_disconnected(); }); });
}

void HostLinkOnBus::close() {
    m_exported = nullptr;
}

void HostLinkOnBus::registerOperations() {
    registerOperation("Version", "s", {"version"}, [this](sdbus::MethodCall& call) {
        const std::string version = readText(call);
        forward([version](PlenzoAlarmProtocol& agent) { agent.version(version); });
    });
    registerOperation("AlarmsUpdated", "aa{sv}b", {"eventDicts", "delta"},
                      [this](sdbus::MethodCall& call) { readAlarmsUpdated(call); });
    registerOperation("AlarmsUpdatedFromFile", "hb", {"propertyList", "delta"},
                      [this](sdbus::MethodCall& call) { readAlarmsUpdatedFromFile(call); });
    registerOperation(
        "SourceListUpdated", "aa{sv}", {"sourceNodes"}, [this](sdbus::MethodCall& call) {
            if (auto nodes = readDictionaries(call)) {
                forward([nodes](PlenzoAlarmProtocol& agent) { agent.sourceListUpdated(*nodes); });
            }
        });
    registerOperation("PrefsUpdated", "a{sv}", {"preferences"}, [this](sdbus::MethodCall& call) {
        if (auto preferences = readDictionary(call)) {
            forward(
                [preferences](PlenzoAlarmProtocol& agent) { agent.prefsUpdated(*preferences); });
        }
    });
    registerOperation("WeatherUpdated", "a{sv}", {"weather"}, [this](sdbus::MethodCall& call) {
        if (auto weather = readDictionary(call)) {
            forward([weather](PlenzoAlarmProtocol& agent) { agent.weatherUpdated(*weather); });
        }
    });
    registerOperation("PrepareToStop", "", {}, [this](sdbus::MethodCall&) {
        forward([](PlenzoAlarmProtocol& agent) { agent.prepareToStop(); });
    });
}

void HostLinkOnBus::registerOperation(const char* name, const char* signature,
                                      const std::vector<std::string>& parameters, Reader reader) {
    sdbus::Flags flags;
    flags.set(sdbus::Flags::METHOD_NO_REPLY);
    const auto handle = [reader = std::move(reader)](sdbus::MethodCall call) {
        reader(call);
        answerIfExpected(call);
    };
    m_object->registerMethod(agentaddress::protocolInterface, name, signature, parameters, "", {},
                             handle, flags);
}

void HostLinkOnBus::readAlarmsUpdated(sdbus::MethodCall& call) {
    auto eventDicts = readDictionaries(call);
    if (!eventDicts) {
        return;
    }
    bool delta = false;
    call >> delta;
    forward([eventDicts = std::move(*eventDicts), delta](PlenzoAlarmProtocol& agent) mutable {
        agent.alarmsUpdated(std::move(eventDicts), delta);
    });
}

void HostLinkOnBus::readAlarmsUpdatedFromFile(sdbus::MethodCall& call) {
    sdbus::UnixFd file;
    bool delta = false;
    call >> file >> delta;
    auto value = readSealedMemoryFile(file.get());
    Array* eventDicts = value ? value->mutableArray() : nullptr;
    if (eventDicts == nullptr) {
        return;
    }
    forward([batch = std::move(*eventDicts), delta](PlenzoAlarmProtocol& agent) mutable {
        agent.alarmsUpdated(std::move(batch), delta);
    });
}

void HostLinkOnBus::forward(std::function<void(PlenzoAlarmProtocol&)> operation) {
    m_loop.post([this, operation = std::move(operation)] {
        if (m_exported != nullptr) {
            operation(*m_exported);
        }
    });
}

} // namespace plenzo
