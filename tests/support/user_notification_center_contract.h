#pragma once

#include "platform/user_notification_center.h"
#include "propertylist/known_keys.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// Notes what it is told: "title activation", with the activation's number. It may do something
/// more when it is.
class ActivationJournal final : public UserNotificationObserver {
public:
    void didActivateNotification(const DeliveredNotification& notification,
                                 ActivationType activationType) override {
        heard.push_back(notification.title + " " +
                        std::to_string(static_cast<int>(activationType)));
        const auto something = whenTold;
        something(notification.identifier);
    }

    std::vector<std::string> heard;
    std::function<void(std::uint64_t identifier)> whenTold = [](std::uint64_t) {};
};

/// What every implementation of UserNotificationCenter keeps to. A subclass gives the center, and
/// the user's and the desktop's part, which return when the center knows.
class UserNotificationCenterContract {
public:
    UserNotificationCenterContract() = default;
    UserNotificationCenterContract(const UserNotificationCenterContract&) = delete;
    UserNotificationCenterContract& operator=(const UserNotificationCenterContract&) = delete;
    virtual ~UserNotificationCenterContract() = default;

    virtual UserNotificationCenter& center() = 0;
    virtual void settle() = 0;
    /// The titles of what is on the screen.
    virtual std::vector<std::string> onScreen() = 0;
    /// Never Other.
    virtual void activate(const std::string& title, ActivationType activationType) = 0;
    virtual void setClock(Instant now) = 0;
    virtual void startServer() = 0;

    void keepsWhatWasDelivered() {
        startServer();
        setClock(Instant(1000));
        const std::uint64_t first = deliver("a");
        setClock(Instant(2000));
        const std::uint64_t second = deliver("b");
        settle();
        const DeliveredNotifications& there = center().deliveredNotifications();
        ASSERT_EQ(there.size(), 2U);
        EXPECT_LT(first, second);
        EXPECT_EQ(there.at(first).identifier, first);
        EXPECT_EQ(there.at(first).title, "a");
        EXPECT_EQ(there.at(first).actualDeliveryDate, Instant(1000));
        EXPECT_EQ(Value(there.at(second).userInformation), Value(informationOf("b")));
        EXPECT_EQ(there.at(second).actualDeliveryDate, Instant(2000));
        EXPECT_TRUE(there.at(first).hasBeenShown && there.at(second).hasBeenShown);
        EXPECT_THAT(onScreen(), testing::ElementsAre("a", "b"));
    }

    void removesWithoutTelling() {
        startServer();
        ActivationJournal journal;
        const Handle handle = center().observe(journal);
        deliver("a");
        const std::uint64_t removed = deliver("b");
        deliver("c");
        deliver("d");
        settle();
        center().removeDelivered(removed);
        center().removeDelivered(removed);
        center().removeDelivered(0);
        settle();
        EXPECT_THAT(onScreen(), testing::ElementsAre("a", "c", "d"));
        EXPECT_THAT(delivered(), testing::ElementsAre("a", "c", "d"));
        center().removeAllDelivered();
        settle();
        EXPECT_THAT(onScreen(), testing::IsEmpty());
        EXPECT_THAT(delivered(), testing::IsEmpty());
        EXPECT_THAT(journal.heard, testing::IsEmpty());
    }

    void tellsEachAnswerOnce() {
        startServer();
        ActivationJournal journal;
        Handle handle = center().observe(journal);
        for (const char* title : {"a", "b", "c", "d", "e"}) {
            deliver(title);
        }
        settle();
        activate("b", ActivationType::None);
        journal.whenTold = [this](std::uint64_t identifier) {
            center().removeDelivered(identifier);
        };
        activate("a", ActivationType::ContentsClicked);
        activate("c", ActivationType::ActionButtonClicked);
        journal.whenTold = [&handle](std::uint64_t /*identifier*/) { handle.reset(); };
        activate("d", ActivationType::None);
        activate("e", ActivationType::None);
        EXPECT_THAT(journal.heard, testing::ElementsAre("b 0", "a 1", "c 2", "d 0"));
        EXPECT_THAT(delivered(), testing::IsEmpty());
        EXPECT_THAT(onScreen(), testing::IsEmpty());
    }

    void waitsForAServer() {
        deliver("a");
        const std::uint64_t removed = deliver("removed");
        deliver("b");
        center().removeDelivered(removed);
        settle();
        EXPECT_THAT(delivered(), testing::ElementsAre("a", "b"));
        EXPECT_FALSE(center().deliveredNotifications().begin()->second.hasBeenShown);
        EXPECT_THAT(onScreen(), testing::IsEmpty());
        startServer();
        settle();
        EXPECT_THAT(onScreen(), testing::ElementsAre("a", "b"));
        EXPECT_TRUE(center().deliveredNotifications().begin()->second.hasBeenShown);
    }

protected:
    static Dictionary informationOf(const std::string& title) {
        return {{keys::eventUidPlusDay, title}};
    }
    std::uint64_t deliver(const std::string& title) {
        UserNotification notification;
        notification.title = title;
        notification.actionButtonTitle = "Snooze";
        notification.userInformation = informationOf(title);
        return center().deliver(notification);
    }
    std::vector<std::string> delivered() {
        std::vector<std::string> titles;
        for (const auto& [identifier, notification] : center().deliveredNotifications()) {
            titles.push_back(notification.title);
        }
        return titles;
    }
};

} // namespace plenzo
