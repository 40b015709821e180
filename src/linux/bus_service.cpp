#include "linux/bus_service.h"

#include <sdbus-c++/sdbus-c++.h>

#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr const char* noOwnerError = "org.freedesktop.DBus.Error.NameHasNoOwner";

std::uint64_t timeLimitMicroseconds(const BusMethod& method) {
    constexpr std::uint64_t usual = 0;
    return method.patience == BusMethod::Patience::Endless ? UINT64_MAX : usual;
}

std::string matchRule(const std::string& sender, const std::string& interface,
                      const std::string& member) {
    return "type='signal',sender='" + sender + "',interface='" + interface + "',member='" + member +
           "'";
}

} // namespace

BusService::BusService(BusOnMainLoop& bus, std::string name, std::function<void()> came,
                       std::function<void()> left)
    : m_bus(bus), m_name(std::move(name)), m_came(std::move(came)), m_left(std::move(left)) {
    addMatch(matchRule(busName, busName, "NameOwnerChanged") + ",arg0='" + m_name + "'",
             [this](sdbus::Message& signal) {
                 std::string sameName;
                 std::string oldOwner;
                 std::string newOwner;
                 signal >> sameName >> oldOwner >> newOwner;
                 setOwner(newOwner);
             });
    askForOwner();
}

void BusService::onSignal(const std::string& interface, const std::string& signal,
                          SignalHandler heard) {
    // The bus compares the sender of what is sent to all, not of what is sent to us alone.
    addMatch(matchRule(m_name, interface, signal),
             [this, heard = std::move(heard)](sdbus::Message& message) {
                 if (isPresent() && message.getSender() == m_owner) {
                     heard(message);
                 }
             });
}

void BusService::addMatch(const std::string& rule, SignalHandler heard) {
    try {
        m_matches.push_back(
            m_bus.connection().addMatch(rule, [heard = std::move(heard)](sdbus::Message& message) {
                try {
                    heard(message);
                } catch (const sdbus::Error&) {
                    return; // It does not hold what such a message has to.
                }
            }));
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, which its owner learns.
    }
}

void BusService::askForOwner() {
    try {
        m_messageBus = sdbus::createProxy(m_bus.connection(), busName, busPath);
        m_messageBus->callMethodAsync("GetNameOwner")
            .onInterface(busName)
            .withArguments(m_name)
            .uponReplyInvoke([this](const sdbus::Error* error, const std::string& owner) {
                if (error == nullptr || error->getName() == noOwnerError) {
                    setOwner(error == nullptr ? owner : std::string());
                }
            });
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, which its owner learns.
    }
}

void BusService::setOwner(const std::string& owner) {
    if (owner == m_owner) {
        return;
    }
    if (isPresent()) {
        m_objects.clear();
        m_owner.clear();
        m_left();
    }
    m_owner = owner;
    if (isPresent()) {
        m_came();
    }
}

void BusService::send(const BusMethod& method, const std::function<void(sdbus::MethodCall&)>& write,
                      const ReplyHandler& replied) {
    if (!isPresent()) {
        return;
    }
    try {
        sdbus::IProxy& destination = object(method.path);
        sdbus::MethodCall message = destination.createMethodCall(method.interface, method.name);
        write(message);
        sendMessage(destination, message, method, replied);
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, which its owner learns.
    }
}

void BusService::sendMessage(sdbus::IProxy& destination, sdbus::MethodCall& message,
                             const BusMethod& method, const ReplyHandler& replied) {
    if (!replied) {
        message.dontExpectReply();
        destination.callMethod(message);
        return;
    }
    const auto read = [replied](sdbus::MethodReply& reply, const sdbus::Error* error) {
        try {
            replied(error == nullptr ? &reply : nullptr);
        } catch (const sdbus::Error&) {
            return; // It does not hold what such a reply has to.
        }
    };
    destination.callMethod(message, read, timeLimitMicroseconds(method));
}

sdbus::IProxy& BusService::object(const std::string& path) {
    auto& proxy = m_objects[path];
    if (!proxy) {
        proxy = sdbus::createProxy(m_bus.connection(), m_owner, path);
    }
    return *proxy;
}

} // namespace plenzo
