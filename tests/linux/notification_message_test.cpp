#include "linux/notification_message.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

UserNotification tea() {
    UserNotification notification;
    notification.title = "Tea & <b>cake</b>";
    notification.subtitle = "Room <4> & \"5\"";
    notification.informativeText = "Today at 5:00 PM";
    notification.actionButtonTitle = "Snooze";
    return notification;
}

NotificationMessage messageOf(const UserNotification& notification,
                              const std::vector<std::string>& capabilityNames) {
    return notificationMessage(notification, notificationCapabilities(capabilityNames));
}

TEST(ANotificationMessage, SaysWhatItsServerCanShow) {
    const auto plain = messageOf(tea(), {"body", "persistence", "unknown"});
    EXPECT_EQ(plain.summary, "Tea & <b>cake</b>");
    EXPECT_EQ(plain.body, "Room <4> & \"5\"\nToday at 5:00 PM");
    const auto markup = messageOf(tea(), {"body-markup", "body"});
    EXPECT_EQ(markup.summary, "Tea & <b>cake</b>") << "a summary has no markup";
    EXPECT_EQ(markup.body, "Room &lt;4&gt; &amp; \"5\"\nToday at 5:00 PM");
    for (const auto& names : {std::vector<std::string>{}, {"body-markup"}}) {
        const auto summaryAlone = messageOf(tea(), names);
        EXPECT_EQ(summaryAlone.summary, "Tea & <b>cake</b> – Today at 5:00 PM");
        EXPECT_EQ(summaryAlone.body, "");
    }
}

TEST(ANotificationMessage, OffersActionsToAServerThatHasThem) {
    UserNotification notification = tea();
    EXPECT_THAT(messageOf(notification, {"body"}).actions, IsEmpty());
    EXPECT_THAT(messageOf(notification, {"actions"}).actions,
                ElementsAre("default", "Tea & <b>cake</b>", "snooze", "Snooze"));
    notification.actionButtonTitle.clear();
    EXPECT_THAT(messageOf(notification, {"actions"}).actions,
                ElementsAre("default", "Tea & <b>cake</b>"));
}

TEST(ANotificationMessage, NamesItsSoundToAServerThatPlaysSounds) {
    UserNotification notification = tea();
    const auto soundOf = [&notification](const std::optional<std::string>& name) {
        notification.soundName = name;
        auto hints = messageOf(notification, {"body", "sound"}).hints;
        return hints.contains("sound-name") ? hints["sound-name"].get<std::string>()
               : hints.contains("suppress-sound") && hints["suppress-sound"].get<bool>()
                   ? "suppressed"
                   : "nothing";
    };
    EXPECT_EQ(soundOf("Basso"), "Basso");
    EXPECT_EQ(soundOf(""), "alarm-clock-elapsed");
    EXPECT_EQ(soundOf(std::nullopt), "suppressed");
    const auto silent = messageOf(notification, {"body"}).hints;
    EXPECT_FALSE(silent.contains("sound-name") || silent.contains("suppress-sound"));
}

TEST(ANotificationMessage, GivesTheFileOfASoundInsteadOfTheName) {
    UserNotification notification = tea();
    notification.soundName = "Basso";
    const auto hintsWith = [&notification](const std::string& path) {
        return notificationMessage(notification, notificationCapabilities({"sound"}), path).hints;
    };
    auto hints = hintsWith("/sounds/Basso.wav");
    EXPECT_EQ(hints["sound-file"].get<std::string>(), "/sounds/Basso.wav");
    EXPECT_FALSE(hints.contains("sound-name"));
    auto named = hintsWith("/sounds/B\xFF.wav");
    EXPECT_EQ(named["sound-name"].get<std::string>(), "Basso") << "the bus carries no such path";
    EXPECT_FALSE(named.contains("sound-file"));
}

TEST(ANotificationMessage, StaysOnTheScreen) {
    auto hints = messageOf(tea(), {"body"}).hints;
    EXPECT_EQ(hints["urgency"].get<std::uint8_t>(), 2);
    EXPECT_FALSE(hints.contains("transient"));
}

TEST(ANotificationMessage, CarriesHostileTextsInPart) {
    UserNotification notification = tea();
    notification.title = std::string("a\0b\xFF", 4);
    notification.subtitle = "x";
    for (int doubling = 0; doubling < 20; ++doubling) {
        notification.subtitle += notification.subtitle;
    }
    notification.informativeText.clear();
    for (int count = 0; count < 3000; ++count) {
        notification.informativeText += "ß";
    }
    notification.informativeText.insert(0, "y");
    const auto message = messageOf(notification, {"body"});
    EXPECT_EQ(message.summary, "a\uFFFDb\uFFFD");
    EXPECT_EQ(message.body.find("x…\ny"), 3999U);
    EXPECT_TRUE(message.body.ends_with("ß…")) << "no character is cut in two";
    EXPECT_LT(message.body.size(), 8100U);
}

} // namespace
} // namespace plenzo
