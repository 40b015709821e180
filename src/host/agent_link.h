#pragma once

#include "host/agent_push.h"

#include <functional>
#include <memory>
#include <string>

namespace sdbus {
class IConnection;
class IProxy;
class MethodCall;
} // namespace sdbus

namespace plenzo {

/// The way to the agent over the session bus: its one-way operations, and its announcements. Owns
/// its proxies; the connection outlives it and is processed by somebody else.
class AgentLink {
public:
    /// What the agent announces.
    struct Listener {
        std::function<void()> launched;
        std::function<void()> isOtherVersion;
        std::function<void(const std::string& reason)> couldNotStart;
    };

    AgentLink(sdbus::IConnection& connection, Listener listener);
    ~AgentLink();
    AgentLink(const AgentLink&) = delete;
    AgentLink& operator=(const AgentLink&) = delete;

    bool isAgentPresent();

    /// Asks the bus to start the agent. An agent that starts announces itself.
    void startAgent();

    /// Sends the version of this program, the preferences, the source list and all events, in that
    /// order. False when they could not be sent.
    bool push(const AgentPush& push);

    /// Sends the agent deletion notices and records of what has changed. False when they could not
    /// be sent.
    bool pushDelta(const Array& events);
    bool pushSourceList(const Array& nodes);
    void pushPreferences(const Dictionary& preferences);
    /// Replaces the weather that the agent has; an empty record is that there is none.
    void pushWeather(const Dictionary& record);

private:
    void subscribe();
    void heard(const std::string& name) const;
    sdbus::MethodCall oneWayCall(const char* operation);
    void sendVersion();
    void sendDictionary(const char* operation, const Dictionary& dictionary);
    bool sendSourceList(const Array& nodes);
    bool sendEvents(const Array& events, bool isDelta);
    bool sendEventsInFile(const Array& events, bool isDelta);

    Listener m_listener;
    std::unique_ptr<sdbus::IProxy> m_agent;
    std::unique_ptr<sdbus::IProxy> m_bus;
};

} // namespace plenzo
