#include "host/agent_link.h"

#include "linux/wire/sealed_memory_file.h"
#include "linux/wire/value_encoder.h"
#include "propertylist/binary_property_list.h"

#include <sdbus-c++/sdbus-c++.h>

#include <cstddef>
#include <cstdint>

namespace plenzo {

namespace {

constexpr const char* agentName = "org.plenzo.PlenzoAlarm";
constexpr const char* agentPath = "/org/plenzo/PlenzoAlarm";
constexpr const char* protocolInterface = "org.plenzo.PlenzoAlarmProtocol";
constexpr const char* notificationsInterface = "org.plenzo.DistributedNotifications";
constexpr const char* busName = "org.freedesktop.DBus";

/// A message of more records takes longer than the file, and one bus message ends at 64 MiB.
constexpr std::size_t mostRecordsInMessage = 2'000;

} // namespace

AgentLink::AgentLink(sdbus::IConnection& connection, Listener listener)
    : m_listener(std::move(listener)),
      m_agent(sdbus::createProxy(connection, agentName, agentPath)),
      m_bus(sdbus::createProxy(connection, busName, "/org/freedesktop/DBus")) {
    subscribe();
}

AgentLink::~AgentLink() = default;

void AgentLink::subscribe() {
    m_agent->registerSignalHandler(notificationsInterface, "Posted", [this](sdbus::Signal& signal) {
        std::string name;
        signal >> name;
        heard(name);
    });
    m_agent->finishRegistration();
}

void AgentLink::heard(const std::string& name) const {
    if (name == "PlenzoAlarm Launched") {
        m_listener.launched();
    } else if (name == "PlenzoAlarm Relaunch") {
        m_listener.isOtherVersion();
    }
}

bool AgentLink::isAgentPresent() {
    try {
        bool isPresent = false;
        m_bus->callMethod("NameHasOwner")
            .onInterface(busName)
            .withArguments(std::string(agentName))
            .storeResultsTo(isPresent);
        return isPresent;
    } catch (const sdbus::Error&) {
        return false;
    }
}

void AgentLink::startAgent() {
    const std::uint32_t noFlags = 0;
    try {
        m_bus->callMethodAsync("StartServiceByName")
            .onInterface(busName)
            .withArguments(std::string(agentName), noFlags)
            .uponReplyInvoke([this](const sdbus::Error* error, std::uint32_t) {
                if (error != nullptr) {
                    m_listener.couldNotStart(error->getMessage());
                }
            });
    } catch (const sdbus::Error& error) {
        m_listener.couldNotStart(error.getMessage());
    }
}

bool AgentLink::push(const AgentPush& push) {
    try {
        sendVersion();
        sendDictionary("PrefsUpdated", push.preferences);
        return sendSourceList(push.sourceList) && sendEvents(push.events, false);
    } catch (const sdbus::Error&) {
        return false;
    }
}

bool AgentLink::pushDelta(const Array& events) {
    try {
        return sendEvents(events, true);
    } catch (const sdbus::Error&) {
        return false;
    }
}

void AgentLink::pushPreferences(const Dictionary& preferences) {
    try {
        sendDictionary("PrefsUpdated", preferences);
    } catch (const sdbus::Error&) {
        // They come with the next full update.
    }
}

void AgentLink::pushWeather(const Dictionary& record) {
    try {
        sendDictionary("WeatherUpdated", record);
    } catch (const sdbus::Error&) {
        // It comes with the next full update.
    }
}

bool AgentLink::pushSourceList(const Array& nodes) {
    try {
        return sendSourceList(nodes);
    } catch (const sdbus::Error&) {
        return false;
    }
}

sdbus::MethodCall AgentLink::oneWayCall(const char* operation) {
    sdbus::MethodCall call = m_agent->createMethodCall(protocolInterface, operation);
    call.dontExpectReply();
    return call;
}

// The agent's version string is that of its program with a "t" behind it.
void AgentLink::sendVersion() {
    sdbus::MethodCall call = oneWayCall("Version");
    call << std::string(PLENZO_VERSION "t");
    m_agent->callMethod(call);
}

void AgentLink::sendDictionary(const char* operation, const Dictionary& dictionary) {
    sdbus::MethodCall call = oneWayCall(operation);
    if (appendDictionary(call, dictionary)) {
        m_agent->callMethod(call);
    }
}

bool AgentLink::sendSourceList(const Array& nodes) {
    sdbus::MethodCall call = oneWayCall("SourceListUpdated");
    if (!appendDictionaries(call, nodes)) {
        return false;
    }
    m_agent->callMethod(call);
    return true;
}

bool AgentLink::sendEvents(const Array& events, bool isDelta) {
    if (events.size() > mostRecordsInMessage) {
        return sendEventsInFile(events, isDelta);
    }
    sdbus::MethodCall call = oneWayCall("AlarmsUpdated");
    if (!appendDictionaries(call, events)) {
        return sendEventsInFile(events, isDelta);
    }
    call << isDelta;
    m_agent->callMethod(call);
    return true;
}

bool AgentLink::sendEventsInFile(const Array& events, bool isDelta) {
    const auto file = sealedMemoryFile(writeBinaryPropertyList(events));
    if (!file) {
        return false;
    }
    sdbus::MethodCall call = oneWayCall("AlarmsUpdatedFromFile");
    call << sdbus::UnixFd(file->get()) << isDelta;
    m_agent->callMethod(call);
    return true;
}

} // namespace plenzo
