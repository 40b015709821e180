#pragma once

#include "platform/user_notification_center.h"

#include <sdbus-c++/Types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// The keys of the actions that a notification offers.
namespace notificationaction {

/// A click on the notification itself.
inline constexpr const char* contents = "default";
inline constexpr const char* button = "snooze";

} // namespace notificationaction

namespace notificationsound {

/// What the sound themes play when an alarm elapses.
inline constexpr const char* ofDesktop = "alarm-clock-elapsed";
inline constexpr const char* ofAgent = "Basso";

} // namespace notificationsound

/// What a notification server can do, as far as it makes a difference here.
struct NotificationCapabilities {
    /// Shows a text below the title.
    bool body = false;
    /// Reads that text as markup.
    bool bodyMarkup = false;
    bool actions = false;
    bool sound = false;
};

[[nodiscard]] NotificationCapabilities
notificationCapabilities(const std::vector<std::string>& names);

/// A notification in the terms of the Desktop Notifications Specification 1.2, fit for the bus.
struct NotificationMessage {
    std::string summary;
    std::string body;
    /// Keys and labels in turn.
    std::vector<std::string> actions;
    std::map<std::string, sdbus::Variant> hints;
};

/// The notification as a server with these capabilities shows it best. Texts of absurd length are
/// cut off. A sound whose file is known is played from it: the server's theme may lack it.
[[nodiscard]] NotificationMessage
notificationMessage(const UserNotification& notification,
                    const NotificationCapabilities& capabilities,
                    const std::optional<std::string>& soundPath = std::nullopt);

} // namespace plenzo
