#pragma once

#include "platform/clock.h"
#include "platform/observer_slot.h"
#include "platform/user_notification_center.h"
#include "support/journal.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// Notifications in memory. Tests play the user and the server.
class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    FakeUserNotificationCenter(Journal& journal, const Clock& clock)
        : m_journal(journal), m_clock(clock) {}

    std::uint64_t deliver(const UserNotification& notification) override {
        m_journal.push_back("deliver " + notification.title);
        delivered.push_back(notification);
        ++m_count;
        m_there[m_count] = {.identifier = m_count,
                            .title = notification.title,
                            .userInformation = notification.userInformation,
                            .actualDeliveryDate = m_clock.now(),
                            .hasBeenShown = hasServer};
        return m_count;
    }
    [[nodiscard]] const DeliveredNotifications& deliveredNotifications() const override {
        return m_there;
    }
    void removeDelivered(std::uint64_t identifier) override { m_there.erase(identifier); }
    void removeAllDelivered() override {
        m_journal.emplace_back("remove notifications");
        m_there.clear();
    }
    [[nodiscard]] bool hasSoundNamed(const std::string& name) const override {
        return sounds.contains(name);
    }
    [[nodiscard]] Handle observe(UserNotificationObserver& observer) override {
        return m_observer.observe(observer);
    }

    /// What the user does with a notification that is there, by its title: afterwards it is gone.
    void activate(const std::string& title, ActivationType activationType) {
        const auto found = std::ranges::find_if(
            m_there, [&title](const auto& there) { return there.second.title == title; });
        if (found == m_there.end()) {
            return;
        }
        const DeliveredNotification notification = found->second;
        m_observer.tell(&UserNotificationObserver::didActivateNotification, notification,
                        activationType);
        m_there.erase(notification.identifier);
    }

    /// What waited for a server is on the screen then.
    void startServer() {
        hasServer = true;
        for (auto& [identifier, notification] : m_there) {
            notification.hasBeenShown = true;
        }
    }

    /// Everything that was ever delivered.
    std::vector<UserNotification> delivered;
    std::set<std::string> sounds;
    bool hasServer = true;

private:
    Journal& m_journal;
    const Clock& m_clock;
    ObserverSlot<UserNotificationObserver> m_observer;
    DeliveredNotifications m_there;
    std::uint64_t m_count = 0;
};

} // namespace plenzo
