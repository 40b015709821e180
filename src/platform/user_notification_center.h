#pragma once

#include "dates/instant.h"
#include "platform/handle.h"
#include "propertylist/dictionary.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace plenzo {

/// One notification on the user's screen: plain texts in UTF-8, any of them empty.
struct UserNotification {
    std::string title;
    std::string subtitle;
    std::string informativeText;
    /// The sound that comes with it. The empty name stands for the desktop's own sound.
    std::optional<std::string> soundName;
    /// What the action button says. Empty for a notification without a button.
    std::string actionButtonTitle;
    /// What the sender wants to find again with the notification; the user does not see it.
    Dictionary userInformation;
};

/// A notification that was delivered and is still there.
struct DeliveredNotification {
    /// Of this notification and, as long as the program runs, no other.
    std::uint64_t identifier = 0;
    std::string title;
    Dictionary userInformation;
    /// When it was delivered, whether or not it could be shown at once.
    Instant actualDeliveryDate;
    /// Whether it has been on the screen; false while there is nobody to show it.
    bool hasBeenShown = false;
};

/// By identifier, which grow: in the order of their delivery.
using DeliveredNotifications = std::map<std::uint64_t, DeliveredNotification>;

/// What the user did with a notification.
enum class ActivationType {
    /// Closed it without an answer.
    None,
    ContentsClicked,
    ActionButtonClicked,
    Other,
};

/// Told of what the user does with notifications.
class UserNotificationObserver {
public:
    UserNotificationObserver() = default;
    UserNotificationObserver(const UserNotificationObserver&) = delete;
    UserNotificationObserver& operator=(const UserNotificationObserver&) = delete;
    virtual ~UserNotificationObserver() = default;

    /// At most once for each notification, which may be removed within the call.
    virtual void didActivateNotification(const DeliveredNotification& notification,
                                         ActivationType activationType) = 0;
};

/// The desktop's notifications. Delivery is asynchronous and a missing server is no error: what is
/// delivered without one waits for one. Whether the agent is in front makes no difference.
class UserNotificationCenter {
public:
    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;
    virtual ~UserNotificationCenter() = default;

    /// Gives the identifier of what was delivered.
    virtual std::uint64_t deliver(const UserNotification& notification) = 0;
    /// What was delivered through this object, without what the user, the desktop or we have
    /// removed since. Good until the center is used again or the main loop goes on.
    [[nodiscard]] virtual const DeliveredNotifications& deliveredNotifications() const = 0;
    /// Removes it from the screen, or from what waits for it. Does nothing when it is gone already.
    /// The observer is not told.
    virtual void removeDelivered(std::uint64_t identifier) = 0;
    /// Removes every notification that was delivered through this object and is still there.
    virtual void removeAllDelivered() = 0;

    /// Whether a notification can have a sound of that name.
    [[nodiscard]] virtual bool hasSoundNamed(const std::string& name) const = 0;
    /// Tells the observer, from the main loop, as long as the handle lives. One observer at a time.
    [[nodiscard]] virtual Handle observe(UserNotificationObserver& observer) = 0;
};

} // namespace plenzo
