#include "core/alarm_mail.h"

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

void AlarmMail::send(const Alarm& alarm) {
    if (m_collaborators.mailer == nullptr) {
        m_collaborators.hostCommands.sendAcknowledgedToPlenzo(alarm);
        return;
    }
    m_waiting.push_back(alarm);
    handOut();
}

/// A loop, because the mailer may refuse one message after the other from within the call.
void AlarmMail::handOut() {
    if (m_isHandingOut) {
        return;
    }
    m_isHandingOut = true;
    while (!m_isMailing && !m_waiting.empty()) {
        handOutFirst();
    }
    m_isHandingOut = false;
}

void AlarmMail::handOutFirst() {
    m_isMailing = true;
    m_hasBegun = false;
    m_collaborators.mailer->mail(
        message(m_waiting.front()),
        {.begins = [this] { letGoOfFirst(); }, .finished = [this](bool /*isTaken*/) { finish(); }});
}

void AlarmMail::letGoOfFirst() {
    m_hasBegun = true;
    const Alarm alarm = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_alarmLeft();
    m_collaborators.hostCommands.sendAcknowledgedToPlenzo(alarm);
}

void AlarmMail::finish() {
    if (!m_hasBegun) {
        letGoOfFirst();
    }
    m_isMailing = false;
    handOut();
}

Array AlarmMail::waitingAlarms() const {
    Array alarms;
    alarms.reserve(m_waiting.size());
    for (const Alarm& alarm : m_waiting) {
        alarms.append(Value(dictionaryRepresentation(alarm)));
    }
    return alarms;
}

MailMessage AlarmMail::message(const Alarm& alarm) const {
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
