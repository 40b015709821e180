#include "host/commands/host_command.h"

#include "host/records/agent_date.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <vector>

namespace plenzo {

namespace {

constexpr std::string_view schemeMark = "plenzoevent:";
constexpr std::size_t longestUrl = 65'536;
constexpr std::size_t longestUid = 2'048;
/// Since 2001. Whoever types more digits means "never", and does not mean to lose the alarm.
constexpr std::int64_t farthestSnoozeSeconds = 1000LL * 366 * 86'400;

using Fields = std::vector<std::string_view>;
using Kind = HostCommand::Kind;

char lower(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

/// What is between the slashes after the scheme, the command first.
Fields fieldsOf(std::string_view url) {
    url.remove_prefix(schemeMark.size());
    url.remove_prefix(std::min(url.find_first_not_of('/'), url.size()));
    Fields fields;
    while (true) {
        const std::size_t end = url.find('/');
        fields.push_back(url.substr(0, end));
        if (end == std::string_view::npos) {
            return fields;
        }
        url.remove_prefix(end + 1);
    }
}

int hexadecimal(char digit) {
    const char letter = lower(digit);
    if (letter >= '0' && letter <= '9') {
        return letter - '0';
    }
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// A '%' that begins no escape stands for itself.
std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool mayEscape = text[at] == '%' && at + 2 < text.size();
        const int high = mayEscape ? hexadecimal(text[at + 1]) : -1;
        const int low = mayEscape ? hexadecimal(text[at + 2]) : -1;
        const bool isEscape = high >= 0 && low >= 0;
        plain += isEscape ? static_cast<char>(high * 16 + low) : text[at];
        at += isEscape ? 2 : 0;
    }
    return plain;
}

std::optional<SystemSeconds> snoozeEnd(std::string_view field) {
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), seconds);
    const bool isTooLarge = error == std::errc::result_out_of_range && field.front() != '-';
    const bool isNumber =
        end == field.data() + field.size() && (error == std::errc() || isTooLarge);
    if (!isNumber || seconds < 0) {
        return std::nullopt;
    }
    return instantFromAgentSeconds(isTooLarge ? farthestSnoozeSeconds
                                              : std::min(seconds, farthestSnoozeSeconds));
}

std::optional<HostCommand> snooze(const Fields& fields) {
    const auto until = fields.size() == 3 ? snoozeEnd(fields[2]) : std::nullopt;
    return until ? std::optional(HostCommand{.kind = Kind::Snooze, .until = *until}) : std::nullopt;
}

std::optional<HostCommand> edit(const Fields& fields) {
    const bool isKnown =
        fields.size() == 4 && fields[2] == "completed" && (fields[3] == "YES" || fields[3] == "NO");
    const bool isDone = isKnown && fields[3] == "YES";
    return isKnown ? std::optional(
                         HostCommand{.kind = Kind::Complete,
                                     .completion = isDone ? Completion::Done : Completion::Undone})
                   : std::nullopt;
}

/// Of a command that is about something.
std::optional<HostCommand> commandAbout(std::string_view name, const Fields& fields) {
    if (name == "snooze") {
        return snooze(fields);
    }
    if (name == "edit") {
        return edit(fields);
    }
    const std::pair<std::string_view, Kind> plain[] = {
        {"acknowledge", Kind::Acknowledge}, {"show", Kind::Show}, {"info", Kind::Info}};
    for (const auto& [plainName, kind] : plain) {
        if (name == plainName && fields.size() == 2) {
            return HostCommand{.kind = kind};
        }
    }
    return std::nullopt;
}

/// Everything after the command: a slash that was not escaped belongs to the text.
std::optional<HostCommand> newItem(const Fields& fields, std::string_view url) {
    const auto begin = static_cast<std::size_t>(fields[1].data() - url.data());
    std::string text = unescaped(url.substr(begin));
    const bool isBlank = std::all_of(
        text.begin(), text.end(), [](unsigned char letter) { return std::isspace(letter) != 0; });
    return isBlank ? std::nullopt
                   : std::optional(HostCommand{.kind = Kind::New, .text = std::move(text)});
}

bool isAboutAlarm(const HostCommand& command) {
    return command.kind == Kind::Snooze || command.kind == Kind::Acknowledge;
}

} // namespace

bool isCommandUrl(std::string_view text) {
    return text.size() >= schemeMark.size() &&
           std::equal(schemeMark.begin(), schemeMark.end(), text.begin(),
                      [](char mark, char letter) { return mark == lower(letter); });
}

std::optional<HostCommand> readHostCommand(std::string_view url) {
    if (!isCommandUrl(url) || url.size() > longestUrl) {
        return std::nullopt;
    }
    const Fields fields = fieldsOf(url);
    std::string name(fields.front());
    std::transform(name.begin(), name.end(), name.begin(), lower); // a host name, by the form
    if (fields.size() < 2 || fields[1].empty()) {
        return std::nullopt;
    }
    if (name == "new") {
        return newItem(fields, url);
    }
    if (name == "prefs") {
        return fields.size() == 2 && fields[1] == "general"
                   ? std::optional(HostCommand{.kind = Kind::Preferences})
                   : std::nullopt;
    }
    auto command = fields[1].size() <= longestUid ? commandAbout(name, fields) : std::nullopt;
    if (command) {
        command->uid = fields[1];
    }
    return command;
}

bool isReplacedBy(const HostCommand& earlier, const HostCommand& later) {
    const bool areOfAlarms = isAboutAlarm(earlier) && isAboutAlarm(later);
    const bool areOfToDos = earlier.kind == Kind::Complete && later.kind == Kind::Complete;
    return (areOfAlarms || areOfToDos) && earlier.uid == later.uid;
}

} // namespace plenzo
