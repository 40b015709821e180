#include "linux/activation_token.h"
#include "notifications_fixture.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

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
