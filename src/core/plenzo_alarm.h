#pragma once

#include "core/alarm_actions.h"
#include "core/alarm_date_text.h"
#include "core/alarm_firing.h"
#include "core/alarm_mail.h"
#include "core/alarm_queue.h"
#include "core/alarm_sound.h"
#include "core/alarm_window_controller.h"
#include "core/day_rollover.h"
#include "core/event_intake.h"
#include "core/fired_alarms.h"
#include "core/host_pushes.h"
#include "core/inspector.h"
#include "core/kept_file_access.h"
#include "core/notification_delivery.h"
#include "core/platform.h"
#include "core/saved_state.h"
#include "core/shown_alarms.h"
#include "core/source_list.h"
#include "core/status_window_controller.h"
#include "model/host_commands.h"
#include "model/title_order.h"
#include "platform/host_link.h"
#include "platform/power_notices.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// What the agent knows of its own program.
struct ProgramIdentity {
    /// The name of the program's folder, "PlenzoAlarm".
    std::string folderName;
    /// Such as "2.1".
    std::string shortVersion;
};

/// The windows, as far as there are any; null otherwise. They outlive the agent.
struct WindowControllers {
    AlarmWindowController* alarmWindow = nullptr;
    StatusWindowController* statusWindow = nullptr;
};

/// The agent: owns the collections and what works on them, launches and ends in order, and answers
/// the host and the system.
class PlenzoAlarm final : public PlenzoAlarmProtocol,
                          private PowerObserver,
                          private AlarmWindowControllerDelegate {
public:
    PlenzoAlarm(Platform platform, ProgramIdentity identity, WindowControllers windows = {});

    /// What was saved is restored and what was due is fired, then the host's link is opened, then
    /// "PlenzoAlarm Launched" is posted.
    void applicationDidFinishLaunching();
    /// Closes the host's link and posts "PlenzoAlarm Quit". Saves nothing.
    void applicationWillTerminate();

    /// The user turns to the agent: the alarm window, when it is there, gets the keyboard.
    void applicationDidBecomeActive() const;

    void version(std::string_view version) override;
    void alarmsUpdated(Array eventDicts, bool delta) override;
    void sourceListUpdated(const Array& sourceNodes) override;
    void prefsUpdated(const Dictionary& preferences) override;
    void weatherUpdated(const Dictionary& weather) override;
    void prepareToStop() override;

    /// Whether an alarm of the row's occurrence is to fire before the date.
    [[nodiscard]] bool eventHasAlarm(const Alarm& row, Instant before) const;

    [[nodiscard]] std::size_t pendingAlarmCount() const { return m_alarmQueue.size(); }
    /// The distant future when nothing is pending.
    [[nodiscard]] Instant nextFireDate() const {
        return m_alarmQueue.empty() ? Instant::distantFuture() : m_alarmQueue.fireDate(0);
    }
    [[nodiscard]] const Inspector& inspector() const { return m_inspector; }
    [[nodiscard]] const Array& sourceListNodes() const { return m_sourceList.sourceListNodes(); }
    [[nodiscard]] const Dictionary& weatherDict() const { return m_weatherDict; }
    /// The agent's private folder. Empty before the launch.
    [[nodiscard]] const std::string& applicationSupportFolder() const {
        return m_applicationSupportFolder;
    }

private:
    void goingToSleep() override;
    void awakeFromSleep() override;
    void shuttingDown() override;
    void shutdownCanceled() override;
    /// Nothing is to be done: the window has told the host.
    void alarmWindowClosed() override {}

    void findApplicationSupportFolder();
    void restoreAlarms();
    void restoreMail(const Array& alarms);
    bool saveAlarms();
    /// After the end of the session was announced, what changes is saved again.
    void saveAgainIfShuttingDown();
    /// Mail that goes out must not be among what is saved, or it would come again.
    void saveMailAgainIfShuttingDown();
    /// The moment that parts the alarms that have fired from those that have not.
    [[nodiscard]] Instant issueTimeForSaving() const;
    [[nodiscard]] bool deliversByNotificationCenter() const;

    Platform m_platform;
    ProgramIdentity m_identity;
    WindowControllers m_windows;
    /// The short version with a "t", which is what the host has to send.
    std::string m_linkVersion;
    std::string m_applicationSupportFolder;
    bool m_shuttingDown = false;

    TitleOrder m_titleOrder;
    AlarmQueue m_alarmQueue;
    FiredAlarms m_firedAlarms;
    AlarmDateText m_alarmDateText;
    HostCommands m_hostCommands;
    NotificationDelivery m_notificationDelivery;
    ShownAlarms m_shownAlarms;
    KeptFileAccess m_keptFileAccess;
    AlarmMail m_alarmMail;
    AlarmActions m_alarmActions;
    AlarmSound m_alarmSound;
    AlarmFiring m_alarmFiring;
    EventIntake m_eventIntake;
    HostPushes m_hostPushes;
    SourceList m_sourceList;
    Dictionary m_weatherDict;
    DayRollover m_dayRollover;
    Inspector m_inspector;
    Handle m_powerNotices;
    Handle m_systemChangeNotices;
};

} // namespace plenzo
