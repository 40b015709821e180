#include "host/edits/component_text.h"

#include "host/ical/ical_time_text.h"
#include "propertylist/text_encoding.h"

namespace plenzo {

namespace {

constexpr unsigned char firstPrintable = 0x20;
constexpr unsigned char deletion = 0x7F;

bool isContinuation(char byte) {
    constexpr unsigned char kindBits = 0xC0;
    constexpr unsigned char continuation = 0x80;
    return (static_cast<unsigned char>(byte) & kindBits) == continuation;
}

/// The length in bytes of the character at `index` in a text of UTF-8.
std::size_t characterLength(std::string_view text, std::size_t index) {
    std::size_t end = index + 1;
    while (end < text.size() && isContinuation(text[end])) {
        ++end;
    }
    return end - index;
}

void appendEscaped(std::string& escaped, char byte) {
    const auto code = static_cast<unsigned char>(byte);
    if (byte == '\n') {
        escaped += "\\n";
    } else if (byte == '\\' || byte == ';' || byte == ',') {
        escaped += '\\';
        escaped += byte;
    } else if ((code >= firstPrintable && code != deletion) || byte == '\t') {
        escaped += byte;
    }
}

std::string timeProperty(const std::string& name, const CalendarTime& time, bool recurs,
                         const std::string& zoneName) {
    if (time.form == TimeForm::Date) {
        return name + ";VALUE=DATE:" + icalDate(cctz::civil_day(time.local));
    }
    const bool isFloating = time.form == TimeForm::Floating || (zoneName.empty() && recurs);
    if (isFloating) {
        return name + ":" + icalLocalTime(time.local);
    }
    if (zoneName.empty() || zoneName == "UTC") {
        return name + ":" + icalUniversalTime(time.zone.instantOf(time.local));
    }
    return name + ";TZID=" + zoneName + ":" + icalLocalTime(time.local);
}

bool isSame(const std::optional<CalendarTime>& first, const std::optional<CalendarTime>& second) {
    return first && second && first->form == second->form && first->local == second->local;
}

/// Of a TEXT property (RFC 5545, 3.3.11).
std::string textValue(std::string_view text) {
    std::string escaped;
    for (const char byte : utf8FromUtf16(utf16FromUtf8(text))) {
        appendEscaped(escaped, byte);
    }
    return escaped;
}

/// At the moment that places the item; of a to-do that is when it is due.
std::string alarmText(const QuickEntry& entry, const std::optional<std::int64_t>& seconds) {
    const auto& moment = entry.kind == ItemKind::Event ? entry.start : entry.end;
    if (!seconds || !moment || moment->form == TimeForm::Date) {
        return {};
    }
    const bool isFromEnd = entry.kind == ItemKind::ToDo;
    return foldedLine("BEGIN:VALARM") + foldedLine("ACTION:DISPLAY") +
           foldedLine("DESCRIPTION:" + textValue(entry.title)) +
           foldedLine(std::string("TRIGGER") + (isFromEnd ? ";RELATED=END" : "") + ":-PT" +
                      std::to_string(*seconds) + "S") +
           foldedLine("END:VALARM");
}

} // namespace

std::string foldedLine(std::string_view line) {
    constexpr std::size_t longestLine = 75;
    std::string folded;
    std::size_t width = 0;
    for (std::size_t index = 0; index < line.size();) {
        const std::size_t length = characterLength(line, index);
        if (width + length > longestLine) {
            folded += "\r\n ";
            width = 1;
        }
        folded += line.substr(index, length);
        width += length;
        index += length;
    }
    return folded + "\r\n";
}

std::string componentText(const QuickEntry& entry, const ComponentIdentity& identity) {
    const bool isEvent = entry.kind == ItemKind::Event;
    const bool recurs = !entry.recurrenceRule.empty();
    const std::string name = isEvent ? "VEVENT" : "VTODO";
    std::string text = foldedLine("BEGIN:" + name);
    text += foldedLine("UID:" + textValue(identity.uid));
    text += foldedLine("DTSTAMP:" + icalUniversalTime(identity.created));
    if (entry.start) {
        text += foldedLine(timeProperty("DTSTART", *entry.start, recurs, identity.zoneName));
    }
    if (entry.end && !isSame(entry.start, entry.end)) { // an end has to be after its start
        text += foldedLine(
            timeProperty(isEvent ? "DTEND" : "DUE", *entry.end, recurs, identity.zoneName));
    }
    text += recurs ? foldedLine("RRULE:" + entry.recurrenceRule) : "";
    text += foldedLine("SUMMARY:" + textValue(entry.title));
    text += entry.location.empty() ? "" : foldedLine("LOCATION:" + textValue(entry.location));
    text += alarmText(entry, identity.alarmSeconds);
    return text + foldedLine("END:" + name);
}

} // namespace plenzo
