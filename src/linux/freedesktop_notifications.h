#pragma once

#include "linux/bus_on_main_loop.h"
#include "platform/clock.h"
#include "platform/observer_slot.h"
#include "platform/user_notification_center.h"

#include <sdbus-c++/IProxy.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// The desktop's notification server (Desktop Notifications Specification 1.2). The bus starts one
/// when there is none; one that goes away takes its notifications along.
class FreedesktopNotifications final : public UserNotificationCenter {
public:
    FreedesktopNotifications(BusOnMainLoop& bus, const Clock& clock);

    void deliver(const UserNotification& notification) override;
    [[nodiscard]] const std::vector<DeliveredNotification>&
    deliveredNotifications() const override {
        return m_there;
    }
    void removeDelivered(std::uint64_t identifier) override;
    void removeAllDelivered() override;
    /// The servers' sounds are not known here: every notification has the desktop's own.
    [[nodiscard]] bool hasSoundNamed(const std::string& /*name*/) const override { return false; }
    [[nodiscard]] Handle observe(UserNotificationObserver& observer) override {
        return m_observer.observe(observer);
    }

private:
    enum class BodyText { Plain, Markup };

    void subscribe();
    void askForCapabilities();
    void noteCapabilities(const std::vector<std::string>& capabilities);
    void forgetServer();
    struct Waiting {
        std::uint64_t identifier;
        UserNotification notification;
    };

    void notify(const Waiting& waiting);
    /// The server's identifier of a delivery, or nothing when it failed.
    void noteAnswer(std::uint64_t identifier, std::optional<std::uint32_t> serverIdentifier);
    void noteClosed(std::uint32_t serverIdentifier);
    bool take(std::uint64_t identifier);
    void close(std::uint32_t serverIdentifier);

    BusOnMainLoop& m_bus;
    const Clock& m_clock;
    /// Grows when a server comes or goes: answers of earlier ones count no more.
    std::uint64_t m_serverNumber = 0;
    std::unique_ptr<sdbus::IProxy> m_server;
    sdbus::Slot m_ownerChanges;
    /// Unknown until the server of the moment has answered; until then deliveries wait.
    std::optional<BodyText> m_bodyText;
    std::vector<Waiting> m_waiting;
    bool m_isAsking = false;
    ObserverSlot<UserNotificationObserver> m_observer;
    std::uint64_t m_count = 0;
    std::vector<DeliveredNotification> m_there;
    /// By the server's identifiers, as soon as it has told them.
    std::map<std::uint32_t, std::uint64_t> m_shown;
};

} // namespace plenzo
