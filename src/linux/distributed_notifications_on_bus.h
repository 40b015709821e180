#pragma once

#include "linux/bus_thread.h"
#include "platform/distributed_notifications.h"

#include <sdbus-c++/IObject.h>

#include <memory>

namespace plenzo {

/// Announcements as the signal "Posted" of the agent's bus object.
class DistributedNotificationsOnBus final : public DistributedNotifications {
public:
    /// To be made before the thread starts.
    explicit DistributedNotificationsOnBus(BusThread& busThread);

    void post(std::string_view name) override;

private:
    BusThread& m_busThread;
    /// Shared with the announcements that wait for the thread.
    std::shared_ptr<sdbus::IObject> m_object;
};

} // namespace plenzo
