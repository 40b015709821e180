#include "linux/activation_token.h"
#include "linux/freedesktop_notifications.h"
#include "support/environment_variable.h"
#include "support/fake_clock.h"
#include "support/played_notification_server.h"
#include "support/temporary_folder.h"
#include "support/user_notification_center_contract.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

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

TEST_F(NotificationsOfTheDesktop, AreShownAgainByAServerThatReturnsUntilTheyAreAnswered) {
    start();
    deliverAndSettle({"answered", "a", "removed", "b"});
    tell("NotificationClosed", std::uint32_t{1}, dismissed);
    m_center.removeDelivered(identifierOf("removed"));
    end();
    EXPECT_THAT(there(), ElementsAre("a", "b"));
    deliver("c");
    start();
    EXPECT_THAT(m_server->summaries(), ElementsAre("a", "b", "c"));
    tell("NotificationClosed", std::uint32_t{2}, dismissed);
    EXPECT_THAT(heard(), ElementsAre("answered 0", "b 0")) << "by the new server's numbers";
    end();
    start();
    EXPECT_THAT(m_server->summaries(), ElementsAre("a", "c"));
}

/// Of our sounds there is one, "Basso".
class SoundsOfNotifications : public NotificationsOfTheDesktop {
protected:
    SoundsOfNotifications() { m_center.setSounds(sounds()); }
    FreedesktopNotifications::Sounds sounds() {
        return {.pathOf =
                    [](const std::string& name) {
                        return name == "Basso" ? std::optional<std::string>("/b.wav")
                                               : std::nullopt;
                    },
                .play = [this](const std::string& name) { m_played.push_back(name); }};
    }
    void deliverWithSound(const std::optional<std::string>& name) {
        UserNotification notification;
        notification.soundName = name;
        m_center.deliver(notification);
        settle();
    }
    std::map<std::string, sdbus::Variant>& hints() { return m_server->shown.back().hints; }
    /// Of each that was shown, whether the server was to play something.
    std::vector<bool> soundsSent() const {
        std::vector<bool> sent;
        for (const auto& shown : m_server->shown) {
            sent.push_back(shown.hints.contains("sound-file"));
        }
        return sent;
    }

    std::vector<std::string> m_played;
};

TEST_F(SoundsOfNotifications, ArePlayedByAServerThatCan) {
    start({"body", "sound"});
    deliverWithSound("Basso");
    EXPECT_EQ(hints()["sound-file"].get<std::string>(), "/b.wav");
    EXPECT_THAT(m_played, IsEmpty());
    EXPECT_TRUE(m_center.hasSoundNamed("Basso"));
    EXPECT_FALSE(m_center.hasSoundNamed("Unknown"));
}

TEST_F(SoundsOfNotifications, GoByTheirNamesToAServerThatMayKnowThem) {
    start({"body", "sound"});
    deliverWithSound("Unknown");
    EXPECT_EQ(hints()["sound-name"].get<std::string>(), "Unknown");
}

TEST_F(SoundsOfNotifications, AreOneForThoseThatComeTogetherAtAServerThatCan) {
    start({"body", "sound"});
    deliverWithSound(std::nullopt);
    for (int number = 0; number < 3; ++number) {
        deliverWithSound("Basso");
    }
    EXPECT_THAT(soundsSent(), ElementsAre(false, true, false, false));
    end();
    start({"body", "sound"});
    EXPECT_THAT(soundsSent(), ElementsAre(false, false, false, false)) << "seen, not heard again";
}

TEST_F(SoundsOfNotifications, ArePlayedHereForAServerThatCannotOneForThoseThatComeTogether) {
    start();
    deliverWithSound(std::nullopt);
    deliverWithSound("Basso");
    EXPECT_THAT(m_played, ElementsAre("Basso"));
    deliverWithSound("Other");
    EXPECT_THAT(m_played, ElementsAre("Basso")) << "too soon";
}

TEST_F(SoundsOfNotifications, AreThoseOfTheDesktopWithoutANameOrElseOurs) {
    start();
    deliverWithSound("");
    EXPECT_THAT(m_played, ElementsAre("Basso"));
    FreedesktopNotifications center(m_bus.loop(), *m_connection, m_clock);
    auto ofTheme = sounds();
    ofTheme.pathOf = [](const std::string& name) { return "/" + name; };
    center.setSounds(std::move(ofTheme));
    UserNotification notification;
    notification.soundName = "";
    center.deliver(notification);
    settle();
    EXPECT_THAT(m_played, ElementsAre("Basso", "alarm-clock-elapsed"));
}

TEST_F(SoundsOfNotifications, AreHeardOnceWhereNobodyShowsThem) {
    deliverWithSound("Basso");
    m_bus.runUntil([this] { return !m_played.empty(); });
    start();
    EXPECT_EQ(m_server->shown.size(), 1U);
    EXPECT_THAT(m_played, ElementsAre("Basso"));
}

TEST_F(SoundsOfNotifications, AreHeardOnceEachAndNotAgainFromAServerThatReturns) {
    FreedesktopNotifications center(m_bus.loop(), *m_connection, m_clock,
                                    {.returnMilliseconds = 0, .shortestSoundPauseMilliseconds = 0});
    center.setSounds(sounds());
    start();
    for (const char* name : {"Basso", "Other"}) {
        UserNotification notification;
        notification.soundName = name;
        center.deliver(notification);
        settle();
    }
    EXPECT_THAT(m_played, ElementsAre("Basso", "Other"));
    end();
    start();
    EXPECT_EQ(m_server->shown.size(), 2U);
    EXPECT_EQ(m_played.size(), 2U);
}

TEST_F(NotificationsOfTheDesktop, AreNotForgottenByAServerThatLeavesBeforeItAnswers) {
    start();
    m_server->holdsAnswers = true;
    deliverAndSettle({"a", "b"});
    end();
    start();
    EXPECT_THAT(m_server->summaries(), ElementsAre("a", "b"));
    m_center.removeAllDelivered();
    settle();
    EXPECT_THAT(m_server->closed, ElementsAre(1, 2));
}

TEST_F(NotificationsOfTheDesktop, WaitUntilTheServerHasSaidWhatItCanDo) {
    start();
    end();
    m_server.emplace(m_bus, std::vector<std::string>{"body"});
    m_server->holdsAnswers = true;
    deliverAndSettle({"a"});
    EXPECT_THAT(m_server->summaries(), IsEmpty());
    m_server->release();
    settle();
    EXPECT_THAT(m_server->summaries(), ElementsAre("a"));
}

TEST_F(NotificationsOfTheDesktop, AreKnownByTheAnswersToTheirOwnCalls) {
    start();
    m_server->holdsAnswers = true;
    deliverAndSettle({"a", "b", "c", "d"});
    m_center.removeDelivered(identifierOf("b"));
    m_server->release(true);
    settle();
    EXPECT_THAT(m_server->onScreen(), ElementsAre("a", "c", "d"));
    tell("NotificationClosed", m_server->numberOf("b"), dismissed);
    tell("NotificationClosed", m_server->numberOf("c"), dismissed);
    EXPECT_THAT(heard(), ElementsAre("c 0"));
    EXPECT_THAT(there(), ElementsAre("a", "d"));
}

TEST_F(NotificationsOfTheDesktop, AreRemovedOnArrivalWhenAllWereRemovedOnTheirWay) {
    start();
    m_server->holdsAnswers = true;
    deliverAndSettle({"a", "b"});
    m_center.removeAllDelivered();
    deliver("c");
    m_server->release();
    settle();
    EXPECT_THAT(m_server->onScreen(), ElementsAre("c"));
}

TEST_F(NotificationsOfTheDesktop, AreTriedAgainWhenTheyAreRefused) {
    start();
    m_server->refuses = true;
    deliverAndSettle({"a", "b", "removed"});
    m_center.removeDelivered(identifierOf("removed"));
    EXPECT_FALSE(m_center.deliveredNotifications().begin()->second.hasBeenShown);
    settle(); // one more try may have been on its way
    m_server->refuses = false;
    m_bus.runUntil([this] {
        auto titles = m_server->onScreen();
        std::ranges::sort(titles);
        return titles == std::vector<std::string>{"a", "b"};
    });
    settle();
    EXPECT_EQ(m_server->onScreen().size(), 2U)
        << "each is tried until it is shown, and then no more";
    EXPECT_TRUE(m_center.deliveredNotifications().rbegin()->second.hasBeenShown);
}

TEST_F(NotificationsOfTheDesktop, AreNotShownTwiceWhenTheServerDoesNotNumberThem) {
    start();
    m_server->numbersNone = true;
    deliverAndSettle({"a"});
    m_server->numbersNone = false;
    deliverAndSettle({"b"});
    EXPECT_THAT(m_server->summaries(), ElementsAre("a", "b"));
    m_center.removeAllDelivered();
    settle();
    EXPECT_THAT(m_server->closed, ElementsAre(2)) << "the other one's number nobody knows";
}

TEST_F(NotificationsOfTheDesktop, ComeAgainWhenThereIsRoomAfterTheServerTookThemAway) {
    start();
    deliverAndSettle({"a", "b", "c", "d"});
    tell("NotificationClosed", std::uint32_t{1}, expired);
    tell("NotificationClosed", std::uint32_t{2}, std::uint32_t{4711});
    EXPECT_EQ(m_server->shown.size(), 4U) << "there is no room yet";
    tell("NotificationClosed", std::uint32_t{3}, PlayedNotificationServer::closedByCall);
    EXPECT_THAT(m_server->summaries(), ElementsAre("a", "b", "c", "d", "b"));
    m_center.removeDelivered(identifierOf("a"));
    tell("NotificationClosed", std::uint32_t{4}, dismissed);
    EXPECT_THAT(there(), ElementsAre("b"));
    tell("NotificationClosed", std::uint32_t{5}, dismissed);
    EXPECT_THAT(heard(), ElementsAre("d 0", "b 0"));
    EXPECT_EQ(m_server->shown.size(), 5U);
}

TEST_F(NotificationsOfTheDesktop, ComeAgainAfterAWhileWhereNothingStays) {
    start();
    deliverAndSettle({"a", "b"});
    tell("NotificationClosed", std::uint32_t{2}, expired);
    EXPECT_EQ(m_server->shown.size(), 2U);
    tell("NotificationClosed", std::uint32_t{1}, expired);
    m_bus.runUntil([this] { return m_server->shown.size() == 4; });
    settle();
    EXPECT_THAT(there(), ElementsAre("a", "b"));
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(NotificationsOfTheDesktop, AreNotAnsweredByWhatIsNoAnswerToThem) {
    start();
    deliverAndSettle({"a"});
    tell("ActionInvoked", std::uint32_t{1}, std::string("unknown"));
    tell("ActionInvoked", std::uint32_t{1}, std::string());
    tell("ActionInvoked", std::uint32_t{1}, std::uint32_t{1});
    tell("ActionInvoked", std::uint32_t{2}, std::string("default"));
    tell("ActionInvoked", std::uint32_t{0}, std::string("snooze"));
    tell("NotificationClosed", std::uint32_t{1});
    tell("NotificationClosed", std::string("1"), dismissed);
    tell("NotificationClosed", UINT32_MAX, dismissed);
    PlayedService stranger(m_bus, "org.test.Stranger", "/org/freedesktop/Notifications");
    stranger.send("org.freedesktop.Notifications", "NotificationClosed",
                  m_connection->connection().getUniqueName(), std::uint32_t{1}, dismissed);
    settle();
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_THAT(there(), ElementsAre("a"));
    tell("ActionInvoked", std::uint32_t{1}, std::string("snooze"));
    tell("ActionInvoked", std::uint32_t{1}, std::string("default"));
    EXPECT_THAT(heard(), ElementsAre("a 2"));
    EXPECT_THAT(m_server->closed, ElementsAre(1));
}

TEST_F(NotificationsOfTheDesktop, HandTheTokenOfTheirActionToWhatIsOpenedForIt) {
    const EnvironmentVariable noDisplay("DISPLAY", "");
    std::vector<std::string> tokens;
    m_journal.whenTold = [&tokens](std::uint64_t) {
        tokens.push_back(newActivationToken().value_or("none"));
    };
    start();
    deliverAndSettle({"a", "b", "c", "d"});
    tell("ActivationToken", std::uint32_t{1}, std::string("token"));
    tell("ActionInvoked", std::uint32_t{1}, std::string("default"));
    tell("ActionInvoked", std::uint32_t{2}, std::string("default"));
    tell("ActivationToken", std::uint32_t{1}, std::string("another's"));
    tell("ActionInvoked", std::uint32_t{3}, std::string("default"));
    tell("ActivationToken", std::uint32_t{4}, std::string(5000, 'x'));
    tell("ActionInvoked", std::uint32_t{4}, std::string("default"));
    EXPECT_THAT(tokens, ElementsAre("token", "none", "none", "none"));
    EXPECT_EQ(newActivationToken(), std::nullopt);
}

TEST_F(NotificationsOfTheDesktop, AreAllShownInTheirOrderWhenTheyComeInABurst) {
    start();
    std::vector<std::string> titles;
    for (int number = 0; number < 500; ++number) {
        titles.push_back(std::to_string(number));
        deliver(titles.back());
    }
    m_bus.runUntil([this] { return m_server->shown.size() == 500; });
    settle();
    EXPECT_EQ(m_server->summaries(), titles);
    m_center.removeAllDelivered();
    settle();
    EXPECT_EQ(m_server->closed.size(), 500U);
}

TEST(AServerOfNotifications, IsStartedForADeliveryAndOnceMoreWhenItLeaves) {
    const TemporaryFolder folder;
    const std::string starts = folder.file("starts");
    std::filesystem::create_directories(folder.file("services"));
    std::ofstream(folder.file("services/org.freedesktop.Notifications.service"))
        << "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/sh -c \"printf x >>"
        << starts << "; exit 1\"\n";
    const auto startCount = [&starts]() -> std::uintmax_t {
        return std::filesystem::exists(starts) ? std::filesystem::file_size(starts) : 0;
    };
    ServedBus bus(folder.file("services"));
    const auto connection = bus.connect();
    FakeClock clock{Instant()};
    FreedesktopNotifications center(bus.loop(), *connection, clock, {.returnMilliseconds = 0});
    bus.roundTrip(*connection);
    EXPECT_EQ(startCount(), 0U);
    center.deliver(UserNotification());
    bus.runUntil([&] { return startCount() == 1; });
    const auto comeAndGo = [&] {
        PlayedNotificationServer server(bus, {"body"});
        bus.runUntil([&server] { return !server.shown.empty(); });
    };
    comeAndGo();
    bus.runUntil([&] { return startCount() == 2; });
    comeAndGo();
    bus.roundTrip(*connection);
    bool isLater = false;
    const Handle later = bus.loop().after(1, [&isLater] { isLater = true; });
    bus.runUntil([&isLater] { return isLater; });
    center.deliver(UserNotification());
    bus.runUntil([&] { return startCount() >= 3; });
    EXPECT_EQ(startCount(), 3U);
}

TEST(AServerThatDoesNotSayWhatItCanDo, ShowsTextsUntilItDoes) {
    ServedBus bus;
    const auto connection = bus.connect();
    FakeClock clock{Instant()};
    FreedesktopNotifications center(bus.loop(), *connection, clock,
                                    {.returnMilliseconds = 0, .capabilitiesMilliseconds = 1});
    UserNotification notification;
    notification.actionButtonTitle = "Snooze";
    center.deliver(notification);
    PlayedNotificationServer server(bus, {"body", "actions"});
    server.holdsAnswers = true;
    bus.runUntil([&server] { return !server.shown.empty(); });
    EXPECT_TRUE(server.shown[0].actions.empty());
    server.release();
    bus.roundTrip(*connection);
    center.deliver(notification);
    bus.runUntil([&server] { return server.shown.size() == 2; });
    EXPECT_FALSE(server.shown[1].actions.empty());
}

} // namespace
} // namespace plenzo
