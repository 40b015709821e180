#include "linux/freedesktop_notifications.h"
#include "support/fake_clock.h"
#include "support/fake_user_notification_center.h"
#include "support/played_notification_server.h"
#include "support/user_notification_center_contract.h"

#include <optional>

namespace plenzo {
namespace {

class FakeCenterUnderContract final : public UserNotificationCenterContract {
public:
    FakeCenterUnderContract() { m_center.hasServer = false; }
    UserNotificationCenter& center() override { return m_center; }
    void settle() override {}
    std::vector<std::string> onScreen() override {
        std::vector<std::string> titles;
        for (const auto& [identifier, notification] : m_center.deliveredNotifications()) {
            if (notification.hasBeenShown) {
                titles.push_back(notification.title);
            }
        }
        return titles;
    }
    void activate(const std::string& title, ActivationType activationType) override {
        m_center.activate(title, activationType);
    }
    void setClock(Instant now) override { m_clock.set(now); }
    void startServer() override { m_center.startServer(); }

private:
    Journal m_journal;
    FakeClock m_clock{Instant()};
    FakeUserNotificationCenter m_center{m_journal, m_clock};
};

class RealCenterUnderContract final : public UserNotificationCenterContract {
public:
    UserNotificationCenter& center() override { return m_center; }
    void settle() override {
        for (int trip = 0; trip < 3; ++trip) {
            m_bus.roundTrip(*m_connection);
            if (m_server) {
                m_server->roundTrip();
            }
        }
    }
    std::vector<std::string> onScreen() override {
        return m_server ? m_server->onScreen() : std::vector<std::string>();
    }
    void activate(const std::string& title, ActivationType activationType) override {
        const std::uint32_t number = m_server->numberOf(title);
        if (activationType != ActivationType::None) {
            const bool isButton = activationType == ActivationType::ActionButtonClicked;
            m_server->tell("ActionInvoked", number, std::string(isButton ? "snooze" : "default"));
        }
        m_server->close(number, PlayedNotificationServer::dismissed);
        settle();
    }
    void setClock(Instant now) override { m_clock.set(now); }
    void startServer() override {
        m_server.emplace(m_bus, std::vector<std::string>{"body", "actions"});
        settle();
    }

private:
    ServedBus m_bus;
    std::unique_ptr<BusOnMainLoop> m_connection = m_bus.connect();
    FakeClock m_clock{Instant()};
    FreedesktopNotifications m_center{m_bus.loop(), *m_connection, m_clock};
    std::optional<PlayedNotificationServer> m_server;
};

template <typename Contract>
class ANotificationCenter : public testing::Test {
protected:
    Contract contract;
};

using Centers = testing::Types<FakeCenterUnderContract, RealCenterUnderContract>;
TYPED_TEST_SUITE(ANotificationCenter, Centers);

TYPED_TEST(ANotificationCenter, KeepsWhatWasDelivered) {
    this->contract.keepsWhatWasDelivered();
}

TYPED_TEST(ANotificationCenter, RemovesWithoutTelling) {
    this->contract.removesWithoutTelling();
}

TYPED_TEST(ANotificationCenter, TellsEachAnswerOnce) {
    this->contract.tellsEachAnswerOnce();
}

TYPED_TEST(ANotificationCenter, WaitsForAServer) {
    this->contract.waitsForAServer();
}

} // namespace
} // namespace plenzo
