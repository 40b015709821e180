#pragma once

#include "dates/instant.h"
#include "model/alarm.h"
#include "platform/workspace.h"

#include <string_view>

namespace plenzo {

/// The decisions of the user, as URLs of the host's own scheme. The host answers, if at all, with
/// new records. Identifiers go into the URLs as they stand; what then is no valid URL is not sent.
class HostCommands {
public:
    explicit HostCommands(Workspace& workspace) : m_workspace(workspace) {}

    enum class InfoPanel { Hide, Show };

    /// Snoozes the reminder until an absolute time, in seconds since the reference date, of which
    /// the fraction is cut off. A time that no 64-bit integer holds is not sent.
    void snoozeReminderWithUID(std::string_view reminderUID, double bySeconds);
    void acknowledgeReminderWithUID(std::string_view reminderUID);
    /// Brings the host forward with the occurrence, or with its info panel.
    void showEventWithUIDPlusDay(std::string_view eventUID, InfoPanel infoPanel);

    void showAlarmInPlenzo(const Alarm& alarm, InfoPanel infoPanel);
    void sendSnoozeToPlenzo(const Alarm& alarm, Instant until);
    void sendAcknowledgedToPlenzo(const Alarm& alarm);
    /// Sends "completed" as it stands in the alarm's record.
    void sendCompletedChangeToPlenzo(const Alarm& alarm);

    /// Brings the host forward with its preferences.
    void showPreferences();
    /// Brings the host forward with a new event of the text, which is escaped already.
    void newEvent(std::string_view escapedText);

private:
    enum class Activation { Activate, Stay };

    void send(std::string_view command, Activation activation);

    Workspace& m_workspace;
};

} // namespace plenzo
