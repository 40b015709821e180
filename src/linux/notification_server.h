#pragma once

#include "linux/bus_service.h"
#include "linux/main_loop.h"
#include "linux/notification_message.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// The desktop's notification server (Desktop Notifications Specification 1.2), whichever it is at
/// the moment. It may be absent, come, go, and be replaced. Nothing of a server that has left is
/// heard of any more: neither its answers nor its signals.
class NotificationServer {
public:
    /// The server's number of a notification, counted from 1 by each server anew.
    using Number = std::uint32_t;

    enum class CloseReason : std::uint32_t { Expired = 1, DismissedByUser = 2, ClosedByCall = 3 };

    struct Events {
        /// A server is there, and what it can do is known.
        std::function<void()> ready;
        std::function<void()> left;
        /// There is none that the bus could start.
        std::function<void()> cannotStart;
        std::function<void(Number number, CloseReason reason)> closed;
        std::function<void(Number number, const std::string& action)> actionInvoked;
        /// Comes before the action: what is opened for it may come forward with this token.
        std::function<void(Number number, const std::string& token)> activationToken;
    };

    enum class Answer {
        Shown,
        Refused,
        /// It can neither be closed nor heard of.
        ShownWithoutNumber,
    };
    using Answered = std::function<void(Answer answer, Number number)>;

    /// A server that has not said what it can do by then is taken for one that shows texts.
    NotificationServer(MainLoop& loop, BusOnMainLoop& bus, int capabilitiesMilliseconds,
                       Events events);

    [[nodiscard]] bool isReady() const { return m_capabilities.has_value(); }
    /// Has the bus start a server, if it can. False when there is one, or one is being started.
    bool start();
    /// Whether the server that is ready plays the sounds of notifications.
    [[nodiscard]] bool playsSounds() const { return m_capabilities && m_capabilities->sound; }
    /// Only while a server is ready. `answered` is called later, unless the server leaves before.
    void notify(const UserNotification& notification, const std::optional<std::string>& soundPath,
                Answered answered);
    void close(Number number);

private:
    void listen();
    void askForStart();
    void askForCapabilities();
    void noteCapabilities(const std::vector<std::string>& names);

    MainLoop& m_loop;
    BusOnMainLoop& m_bus;
    int m_capabilitiesMilliseconds;
    Events m_events;
    Handle m_capabilitiesLimit;
    std::optional<NotificationCapabilities> m_capabilities;
    std::unique_ptr<sdbus::IProxy> m_messageBus;
    bool m_isStarting = false;
    BusService m_service;
};

} // namespace plenzo
