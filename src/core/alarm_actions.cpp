#include "core/alarm_actions.h"

namespace plenzo {

void AlarmActions::carryOut(const Alarm& alarm) {
    switch (alarm.reminderType()) {
    case ReminderType::Open:
        open(alarm);
        m_collaborators.hostCommands.sendAcknowledgedToPlenzo(alarm);
        break;
    case ReminderType::Mail:
        sendMail(alarm);
        break;
    default:
        break;
    }
}

/// What the host mails itself is done.
void AlarmActions::sendMail(const Alarm& alarm) {
    if (alarm.reminderDict->boolForKey(keys::email)) {
        m_collaborators.hostCommands.sendAcknowledgedToPlenzo(alarm);
    } else {
        m_collaborators.mail.send(alarm);
    }
}

void AlarmActions::open(const Alarm& alarm) {
    if (alarm.reminderDict->contains(keys::book)) {
        openSecureFile(
            alarm.reminderDict->dataForKey(keys::book).value_or(std::span<const std::byte>()));
        return;
    }
    const std::string url(alarm.reminderText(keys::url));
    if (!url.empty()) {
        m_collaborators.workspace.openURL(url);
    }
}

void AlarmActions::openSecureFile(std::span<const std::byte> transportData) {
    FileAccess* files = m_collaborators.fileAccess;
    const auto named =
        files != nullptr ? files->secureFileFromTransportData(transportData) : std::nullopt;
    const auto path = named ? files->secureFileFromPath(*named, FileAccess::CreateIfFileExists::Yes)
                            : std::nullopt;
    if (path && files->startAccessing(*path)) {
        m_collaborators.workspace.openFile(*path);
        files->stopAccessing(*path);
    }
}

} // namespace plenzo
