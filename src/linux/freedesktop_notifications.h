#pragma once

#include "linux/main_loop.h"
#include "linux/notification_server.h"
#include "platform/clock.h"
#include "platform/observer_slot.h"
#include "platform/user_notification_center.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// The notifications that the desktop's server shows. What was delivered is kept until it is
/// answered or removed, so that it survives the server: it waits while there is none, and a server
/// that comes shows everything that is still unanswered, once, since what another one had on the
/// screen went with it. A server that shows only a few at a time takes others away: they come again
/// when there is room, and where nothing stays, after a while. An alarm may so be seen again, but
/// it is not lost.
///
/// A new notification never takes over the number of an older one: an answer to the one that was
/// on its way would count for the other.
class FreedesktopNotifications final : public UserNotificationCenter {
public:
    struct Delays {
        /// After which a server is started that has left and not come back by itself. Somebody may
        /// be about to replace it, and a started one would be in the way.
        int returnMilliseconds = 10'000;
        /// After which a refused delivery is tried again; twice as long after each time.
        int retryMilliseconds = 30'000;
        int longestRetryMilliseconds = 3'600'000;
        /// From one sound, whoever plays it, to the next.
        int shortestSoundPauseMilliseconds = 3'000;
        /// After which what a server has taken away comes again, when another has been answered.
        int roomMilliseconds = 300;
        /// And when there is no other.
        int againMilliseconds = 300'000;
        /// After which alarms wait no longer for a server to say what it can do.
        int capabilitiesMilliseconds = 10'000;
    };
    /// The named sounds.
    struct Sounds {
        /// The path of the sound's file; nothing when there is no sound of that name.
        std::function<std::optional<std::string>(const std::string& name)> pathOf;
        /// Plays it where the server cannot; nothing happens when there is none.
        std::function<void(const std::string& name)> play;
    };

    FreedesktopNotifications(MainLoop& loop, BusOnMainLoop& bus, const Clock& clock);
    FreedesktopNotifications(MainLoop& loop, BusOnMainLoop& bus, const Clock& clock, Delays delays);

    std::uint64_t deliver(const UserNotification& notification) override;
    [[nodiscard]] const DeliveredNotifications& deliveredNotifications() const override {
        return m_there;
    }
    void removeDelivered(std::uint64_t identifier) override;
    void removeAllDelivered() override;
    [[nodiscard]] bool hasSoundNamed(const std::string& name) const override {
        return soundPath(name).has_value();
    }
    [[nodiscard]] Handle observe(UserNotificationObserver& observer) override {
        return m_observer.observe(observer);
    }

    /// Until then there are none.
    void setSounds(Sounds sounds) { m_sounds = std::move(sounds); }

private:
    using Number = NotificationServer::Number;

    /// What belongs to a delivered notification and nobody else sees.
    struct Delivery {
        UserNotification notification;
        /// 0 as long as the server has not told it.
        Number number = 0;
    };
    struct ActivationToken {
        Number number = 0;
        std::string token;
    };

    NotificationServer::Events serverEvents();
    void serverLeft();
    void startServerAgain();
    void sendWaiting();
    void send(std::uint64_t identifier, const UserNotification& notification);
    void noteAnswer(std::uint64_t identifier, NotificationServer::Answer answer, Number number);
    void noteShown(std::uint64_t identifier, Number number);
    [[nodiscard]] std::optional<std::string> soundPath(const std::string& name) const {
        return m_sounds.pathOf ? m_sounds.pathOf(name) : std::nullopt;
    }
    /// Whether it has a sound and may make it now; until the next one's turn.
    bool takesTurnToSound(const UserNotification& notification);
    void playSoundOf(std::uint64_t identifier);
    void soundWaiting();
    [[nodiscard]] std::string heardName(const std::string& name) const;
    void noteRefused(std::uint64_t identifier);
    void retryRefused();
    void setAside(std::uint64_t identifier);
    void noteRoom();
    void showAgain(std::size_t count);
    void noteClosed(Number number, NotificationServer::CloseReason reason);
    void noteAction(Number number, const std::string& action);
    void tell(std::uint64_t identifier, ActivationType activationType);
    void forget(std::uint64_t identifier);

    MainLoop& m_loop;
    const Clock& m_clock;
    Delays m_delays;
    Sounds m_sounds;
    ObserverSlot<UserNotificationObserver> m_observer;

    std::uint64_t m_count = 0;
    DeliveredNotifications m_there;
    std::map<std::uint64_t, Delivery> m_deliveries;
    std::map<Number, std::uint64_t> m_identifiers;
    /// To be sent, in this order. Some may have been removed since.
    std::deque<std::uint64_t> m_waiting;
    std::vector<std::uint64_t> m_refused;
    /// Taken away by the server, unanswered, the last one last. Some may have been removed since.
    std::vector<std::uint64_t> m_setAside;
    std::size_t m_room = 0;
    int m_onTheirWay = 0;
    int m_retryMilliseconds;
    ActivationToken m_activationToken;
    bool m_hasAskedForReturn = false;
    Handle m_return;
    Handle m_retry;
    Handle m_roomPause;
    Handle m_again;
    /// As long as another sound would come too soon.
    Handle m_soundPause;
    /// Ends first: it calls all of the above.
    NotificationServer m_server;
};

} // namespace plenzo
