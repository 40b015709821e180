#pragma once

#include "model/alarm.h"
#include "model/host_commands.h"
#include "platform/clock.h"
#include "platform/file_access.h"
#include "platform/localized_strings.h"
#include "platform/mailer.h"
#include "platform/regional_settings.h"
#include "platform/workspace.h"

#include <string>

namespace plenzo {

/// What alarms do beside being shown: they open files and send mail. The host is told that such an
/// alarm is done, whether or not that worked.
class AlarmActions {
public:
    struct Collaborators {
        Workspace& workspace;
        HostCommands& hostCommands;
        const LocalizedStrings& strings;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        /// Null when the desktop has none.
        FileAccess* fileAccess;
        Mailer* mailer;
    };

    explicit AlarmActions(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// Does what the type of the alarm's reminder asks for; of most types nothing.
    void carryOut(const Alarm& alarm);

private:
    void open(const Alarm& alarm);
    void openSecureFile(std::span<const std::byte> transportData);
    void sendMail(const Alarm& alarm);
    [[nodiscard]] MailMessage message(const Alarm& alarm) const;

    Collaborators m_collaborators;
};

} // namespace plenzo
