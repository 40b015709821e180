#include "model/host_commands.h"

#include "model/uri_syntax.h"

#include <cmath>
#include <initializer_list>
#include <string>

namespace plenzo {

namespace {

constexpr double int64Limit = 9223372036854775808.0;

std::string path(std::initializer_list<std::string_view> parts) {
    std::string result;
    for (const std::string_view part : parts) {
        result += result.empty() ? "" : "/";
        result += part;
    }
    return result;
}

} // namespace

void HostCommands::snoozeReminderWithUID(std::string_view reminderUID, double bySeconds) {
    if (!(bySeconds > -int64Limit && bySeconds < int64Limit)) {
        return;
    }
    const auto wholeSeconds = static_cast<long long>(std::trunc(bySeconds));
    send(path({"snooze", reminderUID, std::to_string(wholeSeconds)}), Activation::Stay);
}

void HostCommands::acknowledgeReminderWithUID(std::string_view reminderUID) {
    send(path({"acknowledge", reminderUID}), Activation::Stay);
}

void HostCommands::showEventWithUIDPlusDay(std::string_view eventUID, InfoPanel infoPanel) {
    send(path({infoPanel == InfoPanel::Show ? "info" : "show", eventUID}), Activation::Activate);
}

void HostCommands::showAlarmInPlenzo(const Alarm& alarm, InfoPanel infoPanel) {
    showEventWithUIDPlusDay(alarm.eventText(keys::uid), infoPanel);
}

void HostCommands::sendSnoozeToPlenzo(const Alarm& alarm, Instant until) {
    snoozeReminderWithUID(alarm.reminderText(keys::uid), until.secondsSinceReferenceDate());
}

void HostCommands::sendAcknowledgedToPlenzo(const Alarm& alarm) {
    acknowledgeReminderWithUID(alarm.reminderText(keys::uid));
}

void HostCommands::sendCompletedChangeToPlenzo(const Alarm& alarm) {
    const char* completed = alarm.eventBool(keys::completed) ? "YES" : "NO";
    send(path({"edit", alarm.eventText(keys::uid), "completed", completed}), Activation::Stay);
}

void HostCommands::showPreferences() {
    send("prefs/general", Activation::Activate);
}

void HostCommands::newEvent(std::string_view escapedText) {
    send(path({"new", escapedText}), Activation::Activate);
}

void HostCommands::send(std::string_view command, Activation activation) {
    const std::string url = "plenzoevent://" + std::string(command);
    if (!isValidURI(url)) {
        return;
    }
    if (activation == Activation::Activate) {
        m_workspace.openURL(url);
    } else {
        m_workspace.openURLWithoutActivation(url);
    }
}

} // namespace plenzo
