#include "core/plenzo_alarm.h"

#include "core/preference_keys.h"

#include <utility>

namespace plenzo {

PlenzoAlarm::PlenzoAlarm(Platform platform, ProgramIdentity identity)
    : m_platform(platform), m_identity(std::move(identity)),
      m_linkVersion(m_identity.shortVersion + "t"),
      m_titleOrder(platform.regionalSettings.locale()), m_alarmQueue(m_titleOrder),
      m_alarmDateText({.clock = platform.clock,
                       .regionalSettings = platform.regionalSettings,
                       .strings = platform.strings}),
      m_hostCommands(platform.workspace),
      m_notificationDelivery({.center = platform.userNotificationCenter,
                              .dateText = m_alarmDateText,
                              .strings = platform.strings,
                              .defaults = platform.defaults,
                              .clock = platform.clock,
                              .hostCommands = m_hostCommands}),
      m_alarmFiring({.queue = m_alarmQueue,
                     .notifications = m_notificationDelivery,
                     .defaults = platform.defaults,
                     .clock = platform.clock,
                     .timers = platform.timers}),
      m_eventIntake({.queue = m_alarmQueue,
                     .clock = platform.clock,
                     .regionalSettings = platform.regionalSettings,
                     .disposal = platform.disposal},
                    [this] { m_alarmFiring.setAlarmTimer(); }),
      m_sourceList(platform.defaults), m_inspector(m_alarmQueue, platform.userNotificationCenter) {
    registerDefaults(platform.defaults);
}

void PlenzoAlarm::applicationDidFinishLaunching() {
    findApplicationSupportFolder();
    m_alarmFiring.fireAlarm();
    m_platform.hostLink.open(*this);
    m_platform.distributedNotifications.post("PlenzoAlarm Launched");
}

void PlenzoAlarm::applicationWillTerminate() {
    m_platform.hostLink.close();
    m_platform.distributedNotifications.post("PlenzoAlarm Quit");
}

void PlenzoAlarm::findApplicationSupportFolder() {
    const StandardFolders& folders = m_platform.folders;
    const std::string parent = folders.applicationSupport().value_or(folders.temporary());
    m_applicationSupportFolder = parent + "/" + m_identity.folderName;
    // Without the folder the agent works all the same; it only cannot save.
    m_platform.folders.createWithIntermediates(m_applicationSupportFolder);
}

void PlenzoAlarm::version(std::string_view version) {
    const bool isOurs = version == m_linkVersion;
    m_platform.distributedNotifications.post(isOurs ? "PlenzoAlarm Version"
                                                    : "PlenzoAlarm Relaunch");
}

void PlenzoAlarm::alarmsUpdated(Array eventDicts, bool delta) {
    m_eventIntake.processEventDicts(std::move(eventDicts), delta, std::nullopt);
}

void PlenzoAlarm::sourceListUpdated(const Array& sourceNodes) {
    m_sourceList.setSourceListFromNodes(sourceNodes);
}

bool PlenzoAlarm::deliversByNotificationCenter() const {
    return m_platform.defaults.boolForKey(preferences::issueAlarms) &&
           m_platform.defaults.boolForKey(preferences::useNotificationCenter);
}

void PlenzoAlarm::prefsUpdated(const Dictionary& preferences) {
    const bool delivered = deliversByNotificationCenter();
    m_platform.defaults.setValues(preferences);
    m_platform.defaults.synchronize();
    if (delivered && !deliversByNotificationCenter()) {
        m_notificationDelivery.purgeAllUserNotifications();
    }
}

void PlenzoAlarm::weatherUpdated(const Dictionary& weather) {
    m_weatherDict = weather;
}

void PlenzoAlarm::prepareToStop() {
    m_platform.defaults.synchronize();
    m_notificationDelivery.purgeAllUserNotifications();
}

} // namespace plenzo
