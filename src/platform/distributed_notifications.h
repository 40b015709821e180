#pragma once

#include <string_view>

namespace plenzo {

/// Announcements to whoever listens on the user's session, without a destination or an answer.
class DistributedNotifications {
public:
    DistributedNotifications() = default;
    DistributedNotifications(const DistributedNotifications&) = delete;
    DistributedNotifications& operator=(const DistributedNotifications&) = delete;
    virtual ~DistributedNotifications() = default;

    /// Announces `name` at once. When nobody can hear it, nothing happens.
    virtual void post(std::string_view name) = 0;
};

} // namespace plenzo
