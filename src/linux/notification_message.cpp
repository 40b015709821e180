#include "linux/notification_message.h"

#include "linux/wire/bus_text.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace plenzo {

namespace {

/// More than anybody reads. A message of many megabytes would cost the connection to the bus.
constexpr std::size_t longestTextBytes = 4000;
constexpr std::uint8_t criticalUrgency = 2;

/// Does not cut a character in two.
std::string_view beginningOf(std::string_view text) {
    if (text.size() <= longestTextBytes) {
        return text;
    }
    std::size_t end = longestTextBytes;
    const auto continuesCharacter = [&text](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
    };
    while (end > 0 && continuesCharacter(end)) {
        --end;
    }
    return text.substr(0, end);
}

std::string shownText(std::string_view text) {
    const std::string_view beginning = beginningOf(text);
    return busText(beginning) + (beginning.size() < text.size() ? "…" : "");
}

/// The body's markup is a small subset of XML.
std::string escaped(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string joined(const std::string& first, const char* separator, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : separator) + second;
}

void setTexts(NotificationMessage& message, const UserNotification& notification,
              const NotificationCapabilities& capabilities) {
    const std::string title = shownText(notification.title);
    const std::string place = shownText(notification.subtitle);
    const std::string time = shownText(notification.informativeText);
    if (!capabilities.body) {
        message.summary = joined(title, " – ", time);
        return;
    }
    const std::string body = joined(place, "\n", time);
    message.summary = title;
    message.body = capabilities.bodyMarkup ? escaped(body) : body;
}

void setActions(NotificationMessage& message, const UserNotification& notification) {
    // A server shows no label for a click on the notification itself, or shows it as a button.
    message.actions = {notificationaction::contents, shownText(notification.title)};
    if (!notification.actionButtonTitle.empty()) {
        message.actions.insert(message.actions.end(), {notificationaction::button,
                                                       shownText(notification.actionButtonTitle)});
    }
}

void setSound(NotificationMessage& message, const UserNotification& notification,
              const std::optional<std::string>& soundPath) {
    if (!notification.soundName) {
        message.hints["suppress-sound"] = sdbus::Variant(true);
        return;
    }
    if (soundPath && isBusText(*soundPath)) {
        message.hints["sound-file"] = sdbus::Variant(*soundPath);
        return;
    }
    const std::string name = shownText(*notification.soundName);
    message.hints["sound-name"] =
        sdbus::Variant(name.empty() ? notificationsound::ofDesktop : name);
}

} // namespace

NotificationCapabilities notificationCapabilities(const std::vector<std::string>& names) {
    const auto has = [&names](const char* name) {
        return std::ranges::find(names, name) != names.end();
    };
    return {.body = has("body"),
            .bodyMarkup = has("body-markup"),
            .actions = has("actions"),
            .sound = has("sound")};
}

NotificationMessage notificationMessage(const UserNotification& notification,
                                        const NotificationCapabilities& capabilities,
                                        const std::optional<std::string>& soundPath) {
    NotificationMessage message;
    setTexts(message, notification, capabilities);
    if (capabilities.actions) {
        setActions(message, notification);
    }
    if (capabilities.sound) {
        setSound(message, notification, soundPath);
    }
    // An alarm stays until it is answered.
    message.hints["urgency"] = sdbus::Variant(criticalUrgency);
    // Some desktops close what is there of a program, as if the user had, when its window comes up.
    message.hints["resident"] = sdbus::Variant(true);
    message.hints["desktop-entry"] = sdbus::Variant(std::string("org.plenzo.PlenzoAlarm"));
    return message;
}

} // namespace plenzo
