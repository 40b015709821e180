#include "linux/notification_server.h"

#include <sdbus-c++/sdbus-c++.h>

#include <utility>
#include <vector>

namespace plenzo {

namespace {

constexpr const char* serverName = "org.freedesktop.Notifications";
constexpr const char* serverInterface = "org.freedesktop.Notifications";
constexpr const char* serverPath = "/org/freedesktop/Notifications";

constexpr const char* applicationName = "Plenzo Alarm";
constexpr const char* iconName = "appointment-soon";
constexpr std::uint32_t replacesNone = 0;
constexpr std::int32_t neverExpires = 0;

/// A busy server answers late. To ask it again would show the alarm twice.
BusMethod patientMethod(const char* name) {
    return {serverPath, serverInterface, name, BusMethod::Patience::Endless};
}

/// 0 when the answer does not hold what it has to.
NotificationServer::Number numberIn(sdbus::MethodReply& reply) {
    try {
        NotificationServer::Number number = 0;
        reply >> number;
        return number;
    } catch (const sdbus::Error&) {
        return 0;
    }
}

/// A server that does not say what it can do at least shows texts.
std::vector<std::string> capabilityNamesIn(sdbus::MethodReply* reply) {
    std::vector<std::string> names{"body"};
    if (reply != nullptr) {
        try {
            std::vector<std::string> answered;
            *reply >> answered;
            names = std::move(answered);
        } catch (const sdbus::Error&) {
            return names;
        }
    }
    return names;
}

} // namespace

NotificationServer::NotificationServer(MainLoop& loop, BusOnMainLoop& bus,
                                       int capabilitiesMilliseconds, Events events)
    : m_loop(loop), m_bus(bus), m_capabilitiesMilliseconds(capabilitiesMilliseconds),
      m_events(std::move(events)), m_service(
                                       bus, serverName, [this] { askForCapabilities(); },
                                       [this] {
                                           m_capabilitiesLimit.reset();
                                           m_capabilities.reset();
                                           m_events.left();
                                       }) {
    listen();
}

void NotificationServer::listen() {
    m_service.onSignal(serverInterface, "NotificationClosed", [this](sdbus::Message& signal) {
        Number number = 0;
        std::uint32_t reason = 0;
        signal >> number >> reason;
        m_events.closed(number, static_cast<CloseReason>(reason));
    });
    m_service.onSignal(serverInterface, "ActionInvoked", [this](sdbus::Message& signal) {
        Number number = 0;
        std::string action;
        signal >> number >> action;
        m_events.actionInvoked(number, action);
    });
    m_service.onSignal(serverInterface, "ActivationToken", [this](sdbus::Message& signal) {
        Number number = 0;
        std::string token;
        signal >> number >> token;
        m_events.activationToken(number, token);
    });
}

bool NotificationServer::start() {
    if (m_service.isPresent() || std::exchange(m_isStarting, true)) {
        return false;
    }
    askForStart();
    return true;
}

void NotificationServer::askForStart() {
    try {
        if (!m_messageBus) {
            m_messageBus = sdbus::createProxy(m_bus.connection(), "org.freedesktop.DBus",
                                              "/org/freedesktop/DBus");
        }
        constexpr std::uint32_t noFlags = 0;
        m_messageBus->callMethodAsync("StartServiceByName")
            .onInterface("org.freedesktop.DBus")
            .withArguments(std::string(serverName), noFlags)
            .uponReplyInvoke([this](const sdbus::Error* error, std::uint32_t /*result*/) {
                m_isStarting = false;
                if (error != nullptr && !m_service.isPresent()) {
                    m_events.cannotStart();
                }
            });
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, and the program ends with it.
    }
}

void NotificationServer::askForCapabilities() {
    m_service.call(patientMethod("GetCapabilities"), [this](sdbus::MethodReply* reply) {
        m_capabilitiesLimit.reset();
        noteCapabilities(capabilityNamesIn(reply));
    });
    m_capabilitiesLimit = m_loop.after(m_capabilitiesMilliseconds,
                                       [this] { noteCapabilities(capabilityNamesIn(nullptr)); });
}

void NotificationServer::noteCapabilities(const std::vector<std::string>& names) {
    const bool wasReady = isReady();
    m_capabilities = notificationCapabilities(names);
    if (!wasReady) {
        m_events.ready();
    }
}

void NotificationServer::notify(const UserNotification& notification,
                                const std::optional<std::string>& soundPath, Answered answered) {
    const NotificationMessage message = notificationMessage(
        notification, m_capabilities.value_or(NotificationCapabilities()), soundPath);
    m_service.call(
        patientMethod("Notify"),
        [answered = std::move(answered)](sdbus::MethodReply* reply) {
            const Number number = reply != nullptr ? numberIn(*reply) : 0;
            const Answer unnumbered =
                reply != nullptr ? Answer::ShownWithoutNumber : Answer::Refused;
            answered(number != 0 ? Answer::Shown : unnumbered, number);
        },
        applicationName, replacesNone, iconName, message.summary, message.body, message.actions,
        message.hints, neverExpires);
}

void NotificationServer::close(Number number) {
    // The bus counts the calls that wait for a reply, and there may be hundreds of these.
    m_service.call({serverPath, serverInterface, "CloseNotification"}, {}, number);
}

} // namespace plenzo
