#pragma once

#include "linux/freedesktop_notifications.h"
#include "support/fake_clock.h"
#include "support/played_notification_server.h"
#include "support/user_notification_center_contract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// Notifications that a played server shows, one that comes and goes as the test says.
class NotificationsOfTheDesktop : public testing::Test {
protected:
    void start(std::vector<std::string> capabilities = {"body", "actions"}) {
        m_server.emplace(m_bus, std::move(capabilities));
        settle();
    }
    void settle() {
        for (int trip = 0; trip < 3; ++trip) {
            m_bus.roundTrip(*m_connection);
            if (m_server) {
                m_server->roundTrip();
            }
        }
    }
    void end() {
        m_server.reset();
        settle();
    }
    void deliver(const std::string& title) {
        UserNotification notification;
        notification.title = title;
        m_center.deliver(notification);
    }
    void deliverAndSettle(const std::vector<std::string>& titles) {
        for (const std::string& title : titles) {
            deliver(title);
        }
        settle();
    }
    template <typename... Arguments>
    void tell(const char* signal, const Arguments&... arguments) {
        m_server->tell(signal, arguments...);
        settle();
    }
    std::vector<std::string> heard() { return std::exchange(m_journal.heard, {}); }
    std::vector<std::string> there() const {
        std::vector<std::string> titles;
        for (const auto& [identifier, notification] : m_center.deliveredNotifications()) {
            titles.push_back(notification.title);
        }
        return titles;
    }
    std::uint64_t identifierOf(const std::string& title) const {
        const auto& all = m_center.deliveredNotifications();
        return std::ranges::find_if(
                   all, [&title](const auto& there) { return there.second.title == title; })
            ->first;
    }

    static constexpr std::uint32_t expired = PlayedNotificationServer::expired;
    static constexpr std::uint32_t dismissed = PlayedNotificationServer::dismissed;

    ServedBus m_bus;
    std::unique_ptr<BusOnMainLoop> m_connection = m_bus.connect();
    FakeClock m_clock{Instant()};
    FreedesktopNotifications m_center{m_bus.loop(),
                                      *m_connection,
                                      m_clock,
                                      {.returnMilliseconds = 0,
                                       .retryMilliseconds = 1,
                                       .longestRetryMilliseconds = 2,
                                       .roomMilliseconds = 0,
                                       .againMilliseconds = 1}};
    ActivationJournal m_journal;
    Handle m_observation = m_center.observe(m_journal);
    std::optional<PlayedNotificationServer> m_server;
};

} // namespace plenzo
