#include "core/alarm_actions.h"

#include "model/occurrence_text.h"
#include "propertylist/format_string.h"

namespace plenzo {

namespace {

/// Location, URL and notes, as far as they are there, the notes after an empty line.
std::string details(const Alarm& alarm) {
    std::string text(alarm.eventText(keys::location));
    const auto append = [&text](std::string_view separator, std::string_view more) {
        if (!more.empty()) {
            text.append(text.empty() ? std::string_view() : separator).append(more);
        }
    };
    append("\n", alarm.eventText(keys::url));
    append("\n\n", alarm.eventText(keys::notes));
    return text;
}

/// A mail without words would not do, so the key stands in for a text that is missing.
std::string format(const LocalizedStrings& strings, const std::string& key) {
    const std::string text = strings.string(key);
    return text.empty() ? key : text;
}

std::vector<MailRecipient> recipients(const Dictionary& reminderDict) {
    std::vector<MailRecipient> recipients;
    const Array* addresses = reminderDict.arrayForKey(keys::to);
    for (const Value& address : addresses != nullptr ? *addresses : Array()) {
        if (const auto email = address.string()) {
            recipients.push_back({.email = std::string(*email), .name = {}});
        }
    }
    return recipients;
}

} // namespace

void AlarmActions::carryOut(const Alarm& alarm) {
    switch (alarm.reminderType()) {
    case ReminderType::Open:
        open(alarm);
        break;
    case ReminderType::Mail:
        sendMail(alarm);
        break;
    default:
        return;
    }
    m_collaborators.hostCommands.sendAcknowledgedToPlenzo(alarm);
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

void AlarmActions::sendMail(const Alarm& alarm) {
    if (!alarm.reminderDict->boolForKey(keys::email) && m_collaborators.mailer != nullptr) {
        m_collaborators.mailer->mail(message(alarm), [](bool /*isTaken*/) {});
    }
}

MailMessage AlarmActions::message(const Alarm& alarm) const {
    const RegionalSettings& settings = m_collaborators.regionalSettings;
    const AlarmContext context{.now = m_collaborators.clock.now(),
                               .systemZone = settings.timeZone()};
    const LocalizedStrings& strings = m_collaborators.strings;
    const std::string_view title = alarm.eventText(keys::title);
    return {.attachment = {},
            .recipients = recipients(*alarm.reminderDict),
            .subject = filledFormat(format(strings, "Plenzo Alarm - %@"), {title}),
            .body = filledFormat(
                format(strings, "%@\n\n%@\n\n%@"),
                {dateRangeToString(alarm, context, settings.locale()), title, details(alarm)})};
}

} // namespace plenzo
