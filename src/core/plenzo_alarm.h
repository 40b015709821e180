#pragma once

#include "core/alarm_date_text.h"
#include "core/alarm_firing.h"
#include "core/alarm_queue.h"
#include "core/event_intake.h"
#include "core/inspector.h"
#include "core/notification_delivery.h"
#include "core/source_list.h"
#include "model/title_order.h"
#include "platform/clock.h"
#include "platform/disposal.h"
#include "platform/distributed_notifications.h"
#include "platform/host_link.h"
#include "platform/localized_strings.h"
#include "platform/power_notices.h"
#include "platform/regional_settings.h"
#include "platform/standard_folders.h"
#include "platform/system_change_notices.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"
#include "platform/user_notification_center.h"

#include <string>
#include <string_view>

namespace plenzo {

/// What the agent asks of the desktop. Everything outlives the agent.
struct Platform {
    const Clock& clock;
    Timers& timers;
    const RegionalSettings& regionalSettings;
    const LocalizedStrings& strings;
    StandardFolders& folders;
    UserDefaults& defaults;
    HostLink& hostLink;
    DistributedNotifications& distributedNotifications;
    UserNotificationCenter& userNotificationCenter;
    Disposal& disposal;
    PowerNotices& powerNotices;
    SystemChangeNotices& systemChangeNotices;
};

/// What the agent knows of its own program.
struct ProgramIdentity {
    /// The name of the program's folder, "PlenzoAlarm".
    std::string folderName;
    /// Such as "2.1".
    std::string shortVersion;
};

/// The agent: owns the collections and what works on them, launches and ends in order, and answers
/// the host.
class PlenzoAlarm final : public PlenzoAlarmProtocol {
public:
    PlenzoAlarm(Platform platform, ProgramIdentity identity);

    /// Everything that was due is fired, then the host's link is opened, then "PlenzoAlarm
    /// Launched" is posted.
    void applicationDidFinishLaunching();
    /// Closes the host's link and posts "PlenzoAlarm Quit". Saves nothing.
    void applicationWillTerminate();

    void version(std::string_view version) override;
    void alarmsUpdated(Array eventDicts, bool delta) override;
    void sourceListUpdated(const Array& sourceNodes) override;
    void prefsUpdated(const Dictionary& preferences) override;
    void weatherUpdated(const Dictionary& weather) override;
    void prepareToStop() override;

    [[nodiscard]] const Inspector& inspector() const { return m_inspector; }
    [[nodiscard]] const Array& sourceListNodes() const { return m_sourceList.sourceListNodes(); }
    [[nodiscard]] const Dictionary& weatherDict() const { return m_weatherDict; }
    /// The agent's private folder. Empty before the launch.
    [[nodiscard]] const std::string& applicationSupportFolder() const {
        return m_applicationSupportFolder;
    }

private:
    void findApplicationSupportFolder();
    [[nodiscard]] bool deliversByNotificationCenter() const;

    Platform m_platform;
    ProgramIdentity m_identity;
    /// The short version with a "t", which is what the host has to send.
    std::string m_linkVersion;
    std::string m_applicationSupportFolder;

    TitleOrder m_titleOrder;
    AlarmQueue m_alarmQueue;
    AlarmDateText m_alarmDateText;
    NotificationDelivery m_notificationDelivery;
    AlarmFiring m_alarmFiring;
    EventIntake m_eventIntake;
    SourceList m_sourceList;
    Dictionary m_weatherDict;
    Inspector m_inspector;
};

} // namespace plenzo
