#pragma once

#include "linux/bus_on_main_loop.h"

#include <sdbus-c++/IProxy.h>
#include <sdbus-c++/Message.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {

/// An operation of an object on the bus.
struct BusMethod {
    /// How long the reply may take: what the bus library finds usual, or as long as the service is
    /// there.
    enum class Patience { Usual, Endless };

    std::string path;
    const char* interface;
    const char* name;
    Patience patience = Patience::Usual;
};

/// A service of a bus that is used while it is there and never started: calls go to the connection
/// that owns its name, since a call to the name itself would start it. Signals count only when they
/// come from that connection. Nothing of a service that has left is heard of any more.
class BusService {
public:
    /// Gets the reply to read from, or null for an error. What it throws while it reads is caught.
    using ReplyHandler = std::function<void(sdbus::MethodReply* reply)>;
    using SignalHandler = std::function<void(sdbus::Message& signal)>;

    /// Whether the service is there is asked without waiting. A service that takes the name over
    /// from another comes after the other has left.
    BusService(BusOnMainLoop& bus, std::string name, std::function<void()> came,
               std::function<void()> left);

    [[nodiscard]] bool isPresent() const { return !m_owner.empty(); }

    /// Calls `heard` for each such signal of any of the service's objects, also of later owners of
    /// the name. What it throws while it reads is caught. Waits for the bus, as starting up may.
    void onSignal(const std::string& interface, const std::string& signal, SignalHandler heard);

    /// Does nothing, and `replied` is not called, while the service is away. Without `replied` the
    /// service is asked for no reply.
    template <typename... Arguments>
    void call(const BusMethod& method, const ReplyHandler& replied, const Arguments&... arguments) {
        send(
            method, [&](sdbus::MethodCall& message) { (void)(message << ... << arguments); },
            replied);
    }

    /// To be told when the bus has gone, and the service with it.
    void busLost() { setOwner({}); }

private:
    void addMatch(const std::string& rule, SignalHandler heard);
    void askForOwner();
    void setOwner(const std::string& owner);
    void send(const BusMethod& method, const std::function<void(sdbus::MethodCall&)>& write,
              const ReplyHandler& replied);
    static void sendMessage(sdbus::IProxy& destination, sdbus::MethodCall& message,
                            const BusMethod& method, const ReplyHandler& replied);
    sdbus::IProxy& object(const std::string& path);

    BusOnMainLoop& m_bus;
    std::string m_name;
    std::function<void()> m_came;
    std::function<void()> m_left;
    /// The unique name of the connection. Empty while the service is away.
    std::string m_owner;
    /// Of the present owner, by path; a call under way ends with its object.
    std::map<std::string, std::unique_ptr<sdbus::IProxy>> m_objects;
    std::unique_ptr<sdbus::IProxy> m_messageBus;
    std::vector<sdbus::Slot> m_matches;
};

} // namespace plenzo
