#pragma once

#include "linux/bus_on_main_loop.h"
#include "support/private_bus.h"
#include "support/running_loop.h"

#include <sdbus-c++/sdbus-c++.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace plenzo {

/// A bus of the test's own and connections to it that all run on one loop: those of the program
/// under test, and those of the services that the test plays.
class ServedBus {
public:
    ServedBus() = default;
    /// A bus that starts the services of this folder.
    explicit ServedBus(const std::filesystem::path& serviceFolder) : m_bus(serviceFolder) {}

    [[nodiscard]] std::unique_ptr<BusOnMainLoop> connect(std::function<void()> lost = [] {}) {
        return std::make_unique<BusOnMainLoop>(
            m_running.loop(), sdbus::createSessionBusConnectionWithAddress(m_bus.address()),
            std::move(lost));
    }

    /// Returns when the connection has handled all that others had sent before, given that the
    /// bus had received it: what a service sends is, after a round trip of the service.
    void roundTrip(BusOnMainLoop& connection) {
        bool hasAnswer = false;
        const auto bus = sdbus::createProxy(connection.connection(), "org.freedesktop.DBus",
                                            "/org/freedesktop/DBus");
        bus->callMethodAsync("GetId")
            .onInterface("org.freedesktop.DBus")
            .uponReplyInvoke(
                [&hasAnswer](const sdbus::Error*, const std::string&) { hasAnswer = true; });
        connection.sent();
        runUntil([&hasAnswer] { return hasAnswer; });
    }

    void runUntil(const std::function<bool()>& isDone) { m_running.runUntil(isDone); }
    [[nodiscard]] MainLoop& loop() { return m_running.loop(); }
    [[nodiscard]] PrivateBus& daemon() { return m_bus; }

private:
    PrivateBus m_bus;
    RunningLoop m_running;
};

/// A service that a test plays, on a connection of its own. Destroying it is the end of the
/// service's process.
class PlayedService {
public:
    PlayedService(ServedBus& bus, const std::string& name, const std::string& path)
        : m_bus(bus), m_connection(bus.connect()), m_name(name),
          m_object(sdbus::createObject(m_connection->connection(), path)) {}

    [[nodiscard]] sdbus::IObject& object() { return *m_object; }
    [[nodiscard]] BusOnMainLoop& connection() { return *m_connection; }

    /// Begins to serve what was registered.
    void begin() {
        m_object->finishRegistration();
        m_connection->connection().requestName(m_name);
        m_connection->sent();
    }

    /// Sends a signal to all, or to one connection; returns when the bus has it.
    template <typename... Arguments>
    void send(const char* interface, const char* name, const std::string& destination,
              const Arguments&... arguments) {
        sdbus::Signal signal = m_object->createSignal(interface, name);
        if (!destination.empty()) {
            signal.setDestination(destination);
        }
        (void)(signal << ... << arguments);
        m_object->emitSignal(signal);
        m_bus.roundTrip(*m_connection);
    }

private:
    ServedBus& m_bus;
    std::unique_ptr<BusOnMainLoop> m_connection;
    std::string m_name;
    std::unique_ptr<sdbus::IObject> m_object;
};

} // namespace plenzo
