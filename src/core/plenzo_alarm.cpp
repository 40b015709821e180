#include "core/plenzo_alarm.h"

#include "core/preference_keys.h"

#include <algorithm>
#include <utility>

namespace plenzo {

namespace {

/// What the dates of files can tell apart.
constexpr double leastSeconds = 1e-6;

} // namespace

PlenzoAlarm::PlenzoAlarm(Platform platform, ProgramIdentity identity, WindowControllers windows)
    : m_platform(platform), m_identity(std::move(identity)), m_windows(windows),
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
      m_shownAlarms(windows.alarmWindow),
      m_keptFileAccess(
          {.fileAccess = platform.fileAccess, .timers = platform.timers, .clock = platform.clock}),
      m_alarmMail({.hostCommands = m_hostCommands,
                   .strings = platform.strings,
                   .clock = platform.clock,
                   .regionalSettings = platform.regionalSettings,
                   .mailer = platform.mailer},
                  [this] { saveMailAgainIfShuttingDown(); }),
      m_alarmActions({.workspace = platform.workspace,
                      .hostCommands = m_hostCommands,
                      .fileAccess = platform.fileAccess,
                      .mail = m_alarmMail}),
      m_alarmSound(platform.sounds, platform.clock),
      m_alarmFiring({.queue = m_alarmQueue,
                     .firedAlarms = m_firedAlarms,
                     .notifications = m_notificationDelivery,
                     .actions = m_alarmActions,
                     .sound = m_alarmSound,
                     .alarmWindow = windows.alarmWindow,
                     .statusWindow = windows.statusWindow,
                     .defaults = platform.defaults,
                     .clock = platform.clock,
                     .timers = platform.timers},
                    [this] { saveAgainIfShuttingDown(); }),
      m_eventIntake({.queue = m_alarmQueue,
                     .firedAlarms = m_firedAlarms,
                     .shownAlarms = m_shownAlarms,
                     .notifications = m_notificationDelivery,
                     .fileAccess = m_keptFileAccess,
                     .statusWindow = windows.statusWindow,
                     .clock = platform.clock,
                     .regionalSettings = platform.regionalSettings,
                     .disposal = platform.disposal},
                    {.fireAlarm = [this] { m_alarmFiring.fireAlarmIfDue(); },
                     .queueChanged =
                         [this] {
                             m_alarmFiring.setAlarmTimer();
                             saveAgainIfShuttingDown();
                         }}),
      m_hostPushes(platform.timers, platform.clock,
                   [this](Array eventDicts, bool delta) {
                       m_eventIntake.processEventDicts(std::move(eventDicts), delta, std::nullopt);
                   }),
      m_sourceList(platform.defaults), m_dayRollover({.intake = m_eventIntake,
                                                      .firing = m_alarmFiring,
                                                      .notifications = m_notificationDelivery,
                                                      .alarmWindow = windows.alarmWindow,
                                                      .statusWindow = windows.statusWindow,
                                                      .weatherDict = m_weatherDict,
                                                      .clock = platform.clock,
                                                      .regionalSettings = platform.regionalSettings,
                                                      .timers = platform.timers}),
      m_inspector(m_alarmQueue, platform.userNotificationCenter, windows.alarmWindow) {
    if (windows.alarmWindow != nullptr) {
        windows.alarmWindow->setDelegate(this);
    }
    registerDefaults(platform.defaults);
}

void PlenzoAlarm::applicationDidFinishLaunching() {
    findApplicationSupportFolder();
    restoreAlarms();
    m_alarmFiring.fireAlarm();
    m_dayRollover.setMidnightTimer();
    m_platform.hostLink.open(*this);
    m_powerNotices = m_platform.powerNotices.observe(*this);
    m_systemChangeNotices = m_platform.systemChangeNotices.observe(m_dayRollover);
    m_platform.distributedNotifications.post("PlenzoAlarm Launched");
}

void PlenzoAlarm::applicationWillTerminate() {
    m_platform.hostLink.close();
    m_powerNotices.reset();
    m_systemChangeNotices.reset();
    m_notificationDelivery.ignoreActivations();
    if (m_shuttingDown && m_platform.mailer != nullptr) {
        m_platform.mailer->completeAtOnce();
    }
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
    m_hostPushes.push(std::move(eventDicts), delta);
}

void PlenzoAlarm::sourceListUpdated(const Array& sourceNodes) {
    m_sourceList.setSourceListFromNodes(sourceNodes);
    saveAgainIfShuttingDown();
}

bool PlenzoAlarm::deliversByNotificationCenter() const {
    return m_platform.defaults.boolForKey(preferences::issueAlarms) &&
           m_platform.defaults.boolForKey(preferences::useNotificationCenter);
}

void PlenzoAlarm::prefsUpdated(const Dictionary& preferences) {
    const bool delivered = deliversByNotificationCenter();
    m_platform.defaults.setValues(preferencesOfHost(preferences));
    m_platform.defaults.synchronize();
    if (m_windows.alarmWindow != nullptr) {
        m_windows.alarmWindow->snoozePrefsChanged();
    }
    if (delivered && !deliversByNotificationCenter()) {
        m_notificationDelivery.purgeAllUserNotifications();
    }
}

void PlenzoAlarm::weatherUpdated(const Dictionary& weather) {
    m_weatherDict = weather;
    if (m_windows.statusWindow != nullptr) {
        m_windows.statusWindow->processWeatherDict(m_weatherDict);
    }
    saveAgainIfShuttingDown();
}

void PlenzoAlarm::prepareToStop() {
    m_platform.defaults.synchronize();
    m_notificationDelivery.purgeAllUserNotifications();
}

bool PlenzoAlarm::eventHasAlarm(const Alarm& row, Instant before) const {
    const auto records = m_eventIntake.allEventDicts().withUID(row.eventText(keys::uid));
    return m_alarmQueue.hasAlarmOf(records, before);
}

void PlenzoAlarm::applicationDidBecomeActive() const {
    if (m_windows.alarmWindow != nullptr) {
        m_windows.alarmWindow->makeAlarmWindowKeyIfVisible();
    }
}

void PlenzoAlarm::goingToSleep() {
    m_hostPushes.goingToSleep();
}

void PlenzoAlarm::awakeFromSleep() {
    m_hostPushes.awakeFromSleep();
    m_dayRollover.awakeFromSleep();
}

void PlenzoAlarm::shuttingDown() {
    m_shuttingDown = true;
    saveAlarms();
    m_keptFileAccess.saveAll();
    if (m_platform.fileAccess != nullptr) {
        m_platform.fileAccess->cleanSecureFiles();
    }
}

void PlenzoAlarm::shutdownCanceled() {
    m_shuttingDown = false;
    SavedState(m_platform.files, m_applicationSupportFolder).discard();
}

void PlenzoAlarm::saveAgainIfShuttingDown() {
    if (m_shuttingDown) {
        saveAlarms();
    }
}

void PlenzoAlarm::saveMailAgainIfShuttingDown() {
    if (m_shuttingDown && !saveAlarms()) {
        SavedState(m_platform.files, m_applicationSupportFolder).discardMail();
    }
}

bool PlenzoAlarm::saveAlarms() {
    return SavedState(m_platform.files, m_applicationSupportFolder)
        .save({.eventDicts = m_eventIntake.allEventDicts().eventDicts(),
               .sourceListNodes = m_sourceList.sourceListNodes(),
               .weather = m_weatherDict,
               .mailAlarms = m_alarmMail.waitingAlarms(),
               .issueTime = issueTimeForSaving()});
}

Instant PlenzoAlarm::issueTimeForSaving() const {
    const double handled = std::max(m_platform.clock.now().secondsSinceReferenceDate(),
                                    m_firedAlarms.latest().secondsSinceReferenceDate());
    const double firstPending = m_alarmQueue.empty()
                                    ? std::numeric_limits<double>::infinity()
                                    : m_alarmQueue.fireDate(0).secondsSinceReferenceDate();
    return Instant(std::min(handled + leastSeconds, firstPending - leastSeconds));
}

void PlenzoAlarm::restoreAlarms() {
    SavedState(m_platform.files, m_applicationSupportFolder)
        .restore({.restoreEvents =
                      [this](Array eventDicts, Instant issueTime) {
                          m_eventIntake.processEventDicts(std::move(eventDicts), false, issueTime);
                      },
                  .restoreSourceList =
                      [this](const Array& nodes) { m_sourceList.setSourceListFromNodes(nodes); },
                  .restoreWeather =
                      [this](Dictionary weather) {
                          m_weatherDict = std::move(weather);
                          if (m_windows.statusWindow != nullptr) {
                              m_windows.statusWindow->processWeatherDict(m_weatherDict);
                          }
                      },
                  .restoreMail = [this](const Array& alarms) { restoreMail(alarms); }});
}

/// They were due already; the queue gives them back at once.
void PlenzoAlarm::restoreMail(const Array& alarms) {
    const TimeZone zone = m_platform.regionalSettings.timeZone();
    for (const Value& value : alarms) {
        const Dictionary* form = value.dictionary();
        const Alarm alarm =
            form != nullptr ? alarmFromDictionaryRepresentation(*form, zone) : Alarm();
        if (alarm.fireDate && alarm.eventDict && alarm.reminderType() == ReminderType::Mail) {
            m_alarmQueue.append(alarm.eventDict,
                                {.fireDate = alarm.fireDate->instant(),
                                 .fireDay = alarm.fireDay,
                                 .reminderDict = &*alarm.reminderDict},
                                zone);
        }
    }
    m_alarmQueue.sort();
}

} // namespace plenzo
