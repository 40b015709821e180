#pragma once

#include "platform/clock.h"
#include "platform/disposal.h"
#include "platform/distributed_notifications.h"
#include "platform/file_access.h"
#include "platform/files.h"
#include "platform/host_link.h"
#include "platform/localized_strings.h"
#include "platform/mailer.h"
#include "platform/power_notices.h"
#include "platform/regional_settings.h"
#include "platform/sounds.h"
#include "platform/standard_folders.h"
#include "platform/system_change_notices.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"
#include "platform/user_notification_center.h"
#include "platform/workspace.h"

namespace plenzo {

/// What the agent asks of the desktop. Everything outlives the agent; a pointer is null where the
/// desktop has no such thing.
struct Platform {
    const Clock& clock;
    Timers& timers;
    const RegionalSettings& regionalSettings;
    const LocalizedStrings& strings;
    StandardFolders& folders;
    Files& files;
    UserDefaults& defaults;
    HostLink& hostLink;
    DistributedNotifications& distributedNotifications;
    UserNotificationCenter& userNotificationCenter;
    Workspace& workspace;
    PowerNotices& powerNotices;
    SystemChangeNotices& systemChangeNotices;
    Disposal& disposal;
    FileAccess* fileAccess = nullptr;
    Mailer* mailer = nullptr;
    Sounds* sounds = nullptr;
};

} // namespace plenzo
