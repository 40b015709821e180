#pragma once

#include "model/alarm.h"
#include "model/host_commands.h"
#include "platform/clock.h"
#include "platform/localized_strings.h"
#include "platform/mailer.h"
#include "platform/regional_settings.h"
#include "propertylist/array.h"

#include <deque>
#include <functional>
#include <utility>

namespace plenzo {

/// The mail of alarms, one message after the other. An alarm waits here until its message begins to
/// go out or turns out not to; only then the host is told that the alarm is done. So what is still
/// here at the end of the session can be left to the next, and nothing comes twice.
class AlarmMail {
public:
    struct Collaborators {
        HostCommands& hostCommands;
        const LocalizedStrings& strings;
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        /// Null when the desktop has none: then alarms are done at once.
        Mailer* mailer;
    };

    /// `alarmLeft` is called whenever an alarm no longer waits, before its message goes out.
    AlarmMail(Collaborators collaborators, std::function<void()> alarmLeft)
        : m_collaborators(collaborators), m_alarmLeft(std::move(alarmLeft)) {}

    void send(const Alarm& alarm);
    /// What waits, each alarm in its persisted form, in the order in which it came.
    [[nodiscard]] Array waitingAlarms() const;

private:
    void handOut();
    void handOutFirst();
    void letGoOfFirst();
    void finish();
    [[nodiscard]] MailMessage message(const Alarm& alarm) const;

    Collaborators m_collaborators;
    std::function<void()> m_alarmLeft;
    std::deque<Alarm> m_waiting;
    /// The mailer has a message. Until that has begun, its alarm is the first that waits.
    bool m_isMailing = false;
    bool m_hasBegun = false;
    bool m_isHandingOut = false;
};

} // namespace plenzo
