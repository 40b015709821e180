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

FreedesktopNotifications::FreedesktopNotifications(BusOnMainLoop& bus, const Clock& clock)
    : m_bus(bus), m_clock(clock),
      m_server(sdbus::createProxy(bus.connection(), serverName, serverPath)) {
    subscribe();
}

void FreedesktopNotifications::subscribe() {
    m_server->uponSignal("NotificationClosed")
        .onInterface(serverInterface)
        .call(
            [this](std::uint32_t identifier, std::uint32_t /*reason*/) { noteClosed(identifier); });
    m_server->finishRegistration();
    m_ownerChanges =
        m_bus.connection().addMatch(ownerChangeMatch, [this](sdbus::Message&) { forgetServer(); });
    m_bus.sent();
}

/// A new server knows nothing of the old one's notifications, and may show text differently.
void FreedesktopNotifications::forgetServer() {
    ++m_serverNumber;
    m_shown.clear();
    std::erase_if(m_there, [](const DeliveredNotification& notification) {
        return notification.hasBeenShown;
    });
    m_bodyText.reset();
    m_isAsking = false;
    if (!m_waiting.empty()) {
        askForCapabilities();
    }
}

void FreedesktopNotifications::deliver(const UserNotification& notification) {
    m_there.push_back({.identifier = ++m_count,
                       .title = notification.title,
                       .userInformation = notification.userInformation,
                       .actualDeliveryDate = m_clock.now()});
    if (m_bodyText) {
        notify({m_count, notification});
        return;
    }
    m_waiting.push_back({m_count, notification});
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
    for (const Waiting& waiting : std::exchange(m_waiting, {})) {
        notify(waiting);
    }
}

void FreedesktopNotifications::notify(const Waiting& waiting) {
    const UserNotification& notification = waiting.notification;
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
            .uponReplyInvoke([this, server = m_serverNumber, identifier = waiting.identifier](
                                 const sdbus::Error* error, std::uint32_t serverIdentifier) {
                if (server == m_serverNumber) {
                    noteAnswer(identifier,
                               error == nullptr ? std::optional(serverIdentifier) : std::nullopt);
                }
            });
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, and the program ends with it.
    }
}

void FreedesktopNotifications::noteAnswer(std::uint64_t identifier,
                                          std::optional<std::uint32_t> serverIdentifier) {
    const auto found = std::ranges::find(m_there, identifier, &DeliveredNotification::identifier);
    if (found != m_there.end()) {
        found->hasBeenShown = true;
    }
    if (serverIdentifier && found == m_there.end()) {
        close(*serverIdentifier);
    } else if (serverIdentifier) {
        m_shown.emplace(*serverIdentifier, identifier);
    }
}

void FreedesktopNotifications::noteClosed(std::uint32_t serverIdentifier) {
    if (const auto shown = m_shown.extract(serverIdentifier)) {
        take(shown.mapped());
    }
}

bool FreedesktopNotifications::take(std::uint64_t identifier) {
    return std::erase_if(m_there, [identifier](const DeliveredNotification& notification) {
               return notification.identifier == identifier;
           }) > 0;
}

void FreedesktopNotifications::removeDelivered(std::uint64_t identifier) {
    take(identifier);
    std::erase_if(m_waiting, [identifier](const Waiting& waiting) {
        return waiting.identifier == identifier;
    });
    const auto shown =
        std::ranges::find(m_shown, identifier, &decltype(m_shown)::value_type::second);
    if (shown != m_shown.end()) {
        close(shown->first);
        m_shown.erase(shown);
    }
}

void FreedesktopNotifications::removeAllDelivered() {
    m_waiting.clear();
    m_there.clear();
    for (const auto& [serverIdentifier, identifier] : std::exchange(m_shown, {})) {
        close(serverIdentifier);
    }
}

void FreedesktopNotifications::close(std::uint32_t serverIdentifier) {
    try {
        m_server->callMethodAsync("CloseNotification")
            .onInterface(serverInterface)
            .withArguments(serverIdentifier)
            .uponReplyInvoke([](const sdbus::Error* /*error*/) {});
        m_bus.sent();
    } catch (const sdbus::Error&) {
        return; // The bus has gone, and the program ends with it.
    }
}

} // namespace plenzo
