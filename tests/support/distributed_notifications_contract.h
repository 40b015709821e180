#pragma once

#include "platform/distributed_notifications.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of DistributedNotifications keeps to. A subclass plays a listener.
class DistributedNotificationsContract {
public:
    DistributedNotificationsContract() = default;
    DistributedNotificationsContract(const DistributedNotificationsContract&) = delete;
    DistributedNotificationsContract& operator=(const DistributedNotificationsContract&) = delete;
    virtual ~DistributedNotificationsContract() = default;

    virtual DistributedNotifications& notifications() = 0;
    /// Returns when that many were heard, the names as they stand.
    virtual std::vector<std::string> heard(std::size_t count) = 0;

    void announceNamesAsTheyStandInOrder() {
        const std::vector<std::string> names{"PlenzoAlarm Launched", "", "Größe %@ \"1\"\n",
                                             "PlenzoAlarm Launched", "PlenzoAlarm Quit"};
        for (const std::string& name : names) {
            notifications().post(name);
        }
        EXPECT_EQ(heard(names.size()), names);
    }
};

} // namespace plenzo
