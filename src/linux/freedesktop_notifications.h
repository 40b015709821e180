#pragma once

#include "linux/bus_on_main_loop.h"
#include "platform/user_notification_center.h"

#include <sdbus-c++/IProxy.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace plenzo {

/// The desktop's notification server (Desktop Notifications Specification 1.2). The bus starts one
/// when there is none; one that goes away takes its notifications along.
class FreedesktopNotifications final : public UserNotificationCenter {
public:
    explicit FreedesktopNotifications(BusOnMainLoop& bus);

    void deliver(const UserNotification& notification) override;
    void removeAllDelivered() override;

private:
    enum class BodyText { Plain, Markup };

    void subscribe();
    void askForCapabilities();
    void noteCapabilities(const std::vector<std::string>& capabilities);
    void forgetServer();
    void notify(const UserNotification& notification);
    /// The server's identifier of a delivery, or nothing when it failed.
    void noteAnswer(std::optional<std::uint32_t> identifier);
    void close(std::uint32_t identifier);

    BusOnMainLoop& m_bus;
    /// Grows when a server comes or goes: answers of earlier ones count no more.
    std::uint64_t m_serverNumber = 0;
    std::unique_ptr<sdbus::IProxy> m_server;
    sdbus::Slot m_ownerChanges;
    /// Unknown until the server of the moment has answered; until then deliveries wait.
    std::optional<BodyText> m_bodyText;
    std::vector<UserNotification> m_waiting;
    bool m_isAsking = false;
    std::set<std::uint32_t> m_delivered;
    /// Deliveries that the server has not answered yet. Answers come in the order of the calls.
    std::uint32_t m_onTheirWay = 0;
    /// How many of them, the oldest ones, were to be removed meanwhile.
    std::uint32_t m_toBeClosedOnArrival = 0;
};

} // namespace plenzo
