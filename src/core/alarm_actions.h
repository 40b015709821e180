#pragma once

#include "core/alarm_mail.h"
#include "model/alarm.h"
#include "model/host_commands.h"
#include "platform/file_access.h"
#include "platform/workspace.h"

#include <cstddef>
#include <span>

namespace plenzo {

/// What alarms do beside being shown: they open files and send mail. The host is told that such an
/// alarm is done, whether or not that worked; of mail once it goes out.
class AlarmActions {
public:
    struct Collaborators {
        Workspace& workspace;
        HostCommands& hostCommands;
        /// Null when the desktop has none.
        FileAccess* fileAccess;
        AlarmMail& mail;
    };

    explicit AlarmActions(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// Does what the type of the alarm's reminder asks for; of most types nothing.
    void carryOut(const Alarm& alarm);

private:
    void open(const Alarm& alarm);
    void openSecureFile(std::span<const std::byte> transportData);
    void sendMail(const Alarm& alarm);

    Collaborators m_collaborators;
};

} // namespace plenzo
