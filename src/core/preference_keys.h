#pragma once

#include "platform/user_defaults.h"

namespace plenzo {

/// The keys of the agent's settings. The host is their master: what it sends replaces them.
namespace preferences {

/// Integer, seconds: the usual snooze; 0 or less means that long before the event's start.
inline constexpr const char* snoozeSeconds = "alarmsSnoozeSeconds";
/// Boolean: Return snoozes in the alarm window (otherwise it dismisses).
inline constexpr const char* snoozeDefault = "alarmsSnoozeDefault";
/// Boolean: the alarm window takes the keyboard focus.
inline constexpr const char* takeFocus = "alarmsTakeFocus";
/// Boolean: the menu-bar item is shown.
inline constexpr const char* showMenuIcon = "alarmsShowMenuIcon";
/// Boolean: due alarms reach the user; otherwise they leave the queue unseen.
inline constexpr const char* issueAlarms = "alarmsIssueAlarms";
/// Boolean: alarms are shown by the desktop's notifications rather than the alarm window.
inline constexpr const char* useNotificationCenter = "alarmsUseNotificationCenter";
/// Integer: virtual key code of the global hot key; 11 is the B key.
inline constexpr const char* hotKeyCode = "alarmsHotKeyCode";
/// Integer: modifiers of the hot key; 4352 is 256 (Command) and 4096 (Control).
inline constexpr const char* hotKeyModifiers = "alarmsHotKeyModifiers";
/// Integer: days that the status window lists.
inline constexpr const char* daysToShow = "alarmsDaysToShow";
/// Booleans: what the status window lists.
inline constexpr const char* showDated = "alarmsShowDated";
inline constexpr const char* showUndated = "alarmsShowUndated";
inline constexpr const char* showCompleted = "alarmsShowCompleted";
/// Array of strings: "uid"s of the calendars that the status window leaves out.
inline constexpr const char* omitCalendars = "alarmsOmitCalendars";
/// Boolean: the status window stays open when it loses the focus.
inline constexpr const char* sticky = "alarmsSticky";

} // namespace preferences

/// Registers the default of every key above.
void registerDefaults(UserDefaults& defaults);

/// What the host may set of what it sends: all but what the agent keeps for itself in the settings,
/// which would otherwise be lost.
[[nodiscard]] Dictionary preferencesOfHost(Dictionary sent);

} // namespace plenzo
