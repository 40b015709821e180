#pragma once

#include <string>

namespace plenzo {

/// One notification on the user's screen: plain texts in UTF-8, any of them empty.
struct UserNotification {
    std::string title;
    std::string subtitle;
    std::string informativeText;
};

/// The desktop's notifications. Delivery is asynchronous and a missing server is no error.
class UserNotificationCenter {
public:
    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;
    virtual ~UserNotificationCenter() = default;

    virtual void deliver(const UserNotification& notification) = 0;
    /// Removes every notification that was delivered through this object and is still there.
    virtual void removeAllDelivered() = 0;
};

} // namespace plenzo
