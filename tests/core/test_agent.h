#pragma once

#include "core/plenzo_alarm.h"
#include "core/preference_keys.h"
#include "propertylist/known_keys.h"
#include "support/fake_actions.h"
#include "support/fake_clock.h"
#include "support/fake_desktop.h"
#include "support/fake_files.h"
#include "support/fake_power_notices.h"
#include "support/fake_system_change_notices.h"
#include "support/fake_timers.h"
#include "support/fake_user_defaults.h"
#include "support/fake_workspace.h"
#include "support/instants.h"

#include <string>
#include <vector>

namespace plenzo {

/// The desktop of an agent, all fakes: in Berlin, at noon UTC of 10 March 2026.
struct TestDesktop {
    explicit TestDesktop(Instant now = utc(2026, 3, 10, 12)) : clock(now) {}

    Journal journal;
    FakeClock clock;
    FakeTimers timers{clock};
    FakeRegionalSettings regionalSettings{zone("Europe/Berlin")};
    FakeLocalizedStrings strings;
    FakeStandardFolders folders{journal};
    FakeFiles files{clock};
    FakeUserDefaults defaults;
    FakeHostLink hostLink{journal};
    FakeDistributedNotifications distributedNotifications{journal};
    FakeUserNotificationCenter notifications{journal, clock};
    FakeWorkspace workspace;
    FakePowerNotices powerNotices;
    FakeSystemChangeNotices systemChangeNotices;
    FakeDisposal disposal;
    FakeFileAccess fileAccess;
    FakeMailer mailer;
    FakeSounds sounds;

    [[nodiscard]] Platform platform() { return platform(disposal); }
    [[nodiscard]] Platform platform(Disposal& someDisposal) {
        return {.clock = clock,
                .timers = timers,
                .regionalSettings = regionalSettings,
                .strings = strings,
                .folders = folders,
                .files = files,
                .defaults = defaults,
                .hostLink = hostLink,
                .distributedNotifications = distributedNotifications,
                .userNotificationCenter = notifications,
                .workspace = workspace,
                .powerNotices = powerNotices,
                .systemChangeNotices = systemChangeNotices,
                .disposal = someDisposal,
                .fileAccess = &fileAccess,
                .mailer = &mailer,
                .sounds = &sounds};
    }
};

inline ProgramIdentity testIdentity() {
    return {.folderName = "PlenzoAlarm", .shortVersion = "2.1"};
}

/// The agent on that desktop, without windows.
struct TestAgent : TestDesktop {
    PlenzoAlarm agent{platform(), testIdentity()};

    /// Alarms reach the user, by notifications.
    void issueAlarms() {
        agent.prefsUpdated(Dictionary{{Key(preferences::issueAlarms), true},
                                      {Key(preferences::useNotificationCenter), true}});
    }

    [[nodiscard]] std::vector<std::string> deliveredTitles() const {
        std::vector<std::string> titles;
        for (const UserNotification& notification : notifications.delivered) {
            titles.push_back(notification.title);
        }
        return titles;
    }

    /// "title@seconds from now" for each pending alarm, in queue order.
    [[nodiscard]] std::vector<std::string> pending() const {
        std::vector<std::string> texts;
        for (const Value& value : agent.inspector().pendingAlarms()) {
            const Dictionary& row = *value.dictionary();
            const double seconds = Instant(row.dateForKey(keys::fireDate).value()) - clock.now();
            texts.push_back(std::string(row.stringForKey(keys::title).value_or("")) + "@" +
                            std::to_string(static_cast<long long>(seconds)));
        }
        return texts;
    }
};

/// A reminder that many seconds from the start of its event.
inline Dictionary relativeReminder(const std::string& uid, double seconds, int type = 0) {
    return {{keys::uid, uid}, {keys::type, type}, {keys::rel, seconds}};
}

inline Dictionary absoluteReminder(const std::string& uid, Instant date, int type = 0) {
    return {{keys::uid, uid}, {keys::type, type}, {keys::abs, date.date()}};
}

/// A timed event whose title is its uid.
inline Dictionary event(const std::string& uid, Instant start, const Array& reminders) {
    return {
        {keys::uid, uid}, {keys::title, uid}, {keys::date, start.date()}, {keys::rem, reminders}};
}

inline Dictionary deletionNotice(const std::string& uid) {
    return {{keys::uid, uid}, {keys::del, true}};
}

} // namespace plenzo
