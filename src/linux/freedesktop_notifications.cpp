#include "linux/freedesktop_notifications.h"

#include "linux/wire/bus_text.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <map>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* serverName = "org.freedesktop.Notifications";
constexpr const char* serverPath = "/org/freedesktop/Notifications";
constexpr const char* serverInterface = "org.freedesktop.Notifications";
constexpr const char* ownerChangeMatch =
    "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
    "member='NameOwnerChanged',arg0='org.freedesktop.Notifications'";

constexpr std::uint8_t criticalUrgency = 2;
constexpr std::int32_t neverExpires = 0;

/// The body's markup is a small subset of XML.
std::string escaped(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string joinedLines(const std::string& first, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : "\n") + second;
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(BusOnMainLoop& bus)
    : m_bus(bus), m_server(sdbus::createProxy(bus.connection(), serverName, serverPath)) {
    subscribe();
}

void FreedesktopNotifications::subscribe() {
    m_server->uponSignal("NotificationClosed")
        .onInterface(serverInterface)
        .call([this](std::uint32_t identifier, std::uint32_t /*reason*/) {
            m_delivered.erase(identifier);
        });
    m_server->finishRegistration();
    m_ownerChanges =
        m_bus.connection().addMatch(ownerChangeMatch, [this](sdbus::Message&) { forgetServer(); });
    m_bus.sent();
}

/// A new server knows nothing of the old one's notifications, and may show text differently.
void FreedesktopNotifications::forgetServer() {
    ++m_serverNumber;
    m_delivered.clear();
    m_onTheirWay = 0;
    m_toBeClosedOnArrival = 0;
    m_bodyText.reset();
    m_isAsking = false;
    if (!m_waiting.empty()) {
        askForCapabilities();
    }
}

void FreedesktopNotifications::deliver(const UserNotification& notification) {
    if (m_bodyText) {
        notify(notification);
        return;
    }
    m_waiting.push_back(notification);
    if (!m_isAsking) {
        askForCapabilities();
    }
}

void FreedesktopNotifications::askForCapabilities() {
    m_isAsking = true;
    try {
        m_server->callMethodAsync("GetCapabilities")
            .onInterface(serverInterface)
            .uponReplyInvoke(
                [this, server = m_serverNumber](const sdbus::Error* /*error*/,
                                                const std::vector<std::string>& capabilities) {
                    if (server == m_serverNumber) {
                        noteCapabilities(capabilities);
                    }
                });
        m_bus.sent();
    } catch (const sdbus::Error&) {
        noteCapabilities({});
    }
}

void FreedesktopNotifications::noteCapabilities(const std::vector<std::string>& capabilities) {
    m_isAsking = false;
    const bool hasMarkup =
        std::find(capabilities.begin(), capabilities.end(), "body-markup") != capabilities.end();
    m_bodyText = hasMarkup ? BodyText::Markup : BodyText::Plain;
    for (const UserNotification& notification : std::exchange(m_waiting, {})) {
        notify(notification);
    }
}

void FreedesktopNotifications::notify(const UserNotification& notification) {
    const auto body = joinedLines(notification.subtitle, notification.informativeText);
    const std::map<std::string, sdbus::Variant> hints{
        {"urgency", sdbus::Variant(criticalUrgency)},
        {"desktop-entry", sdbus::Variant(std::string("org.plenzo.PlenzoAlarm"))}};
    try {
        m_server->callMethodAsync("Notify")
            .onInterface(serverInterface)
            .withArguments(std::string("Plenzo Alarm"), std::uint32_t{0},
                           std::string("appointment-soon"), busText(notification.title),
                           busText(m_bodyText == BodyText::Markup ? escaped(body) : body),
                           std::vector<std::string>(), hints, neverExpires)
            .uponReplyInvoke([this, server = m_serverNumber](const sdbus::Error* error,
                                                             std::uint32_t identifier) {
                if (server == m_serverNumber) {
                    noteAnswer(error == nullptr ? std::optional(identifier) : std::nullopt);
                }
            });
        ++m_onTheirWay;
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, and the program ends with it.
    }
}

void FreedesktopNotifications::noteAnswer(std::optional<std::uint32_t> identifier) {
    --m_onTheirWay;
    const bool isToBeClosed = m_toBeClosedOnArrival > 0;
    if (isToBeClosed) {
        --m_toBeClosedOnArrival;
    }
    if (identifier && isToBeClosed) {
        close(*identifier);
    } else if (identifier) {
        m_delivered.insert(*identifier);
    }
}

void FreedesktopNotifications::removeAllDelivered() {
    m_waiting.clear();
    m_toBeClosedOnArrival = m_onTheirWay;
    for (const std::uint32_t identifier : std::exchange(m_delivered, {})) {
        close(identifier);
    }
}

void FreedesktopNotifications::close(std::uint32_t identifier) {
    try {
        m_server->callMethodAsync("CloseNotification")
            .onInterface(serverInterface)
            .withArguments(identifier)
            .uponReplyInvoke([](const sdbus::Error* /*error*/) {});
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, and the program ends with it.
    }
}

} // namespace plenzo
