#include "notifications_fixture.h"

#include <gmock/gmock.h>

#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

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

} // namespace
} // namespace plenzo
