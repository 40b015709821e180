#include "host/ical/calendar_text.h"

#include "host/ical/color_names.h"
#include "host/ical/component_reader.h"
#include "host/ical/ical_values.h"

#include <strings.h>

namespace plenzo {

namespace {

std::string extensionText(icalcomponent* component, std::string_view name) {
    for (icalproperty* property : propertiesOf(component, ICAL_X_PROPERTY)) {
        const char* found = icalproperty_get_x_name(property);
        if (found != nullptr && name == found) {
            return textOf(property);
        }
    }
    return {};
}

std::string firstOf(const std::string& first, const std::string& second) {
    return first.empty() ? second : first;
}

/// Whether the line may be one of those that are read here; most calendars have none.
bool mayDescribe(std::string_view line) {
    const auto startsWith = [line](std::string_view name) {
        return line.size() > name.size() && strncasecmp(line.data(), name.data(), name.size()) == 0;
    };
    return startsWith("NAME") || startsWith("COLOR") || startsWith("X-");
}

void readProperties(const ContentBlocks& blocks, CalendarText& result) {
    std::string text = "BEGIN:VCALENDAR\r\n";
    const std::size_t emptyLength = text.size();
    for (const std::string_view line : blocks.properties) {
        text += mayDescribe(line) ? line : std::string_view();
    }
    if (text.size() == emptyLength) {
        return;
    }
    const ComponentPointer calendar = parsedComponent(text + "\r\nEND:VCALENDAR\r\n");
    if (!calendar) {
        return;
    }
    result.title = firstOf(firstTextOf(calendar.get(), ICAL_NAME_PROPERTY),
                           extensionText(calendar.get(), "X-WR-CALNAME"));
    result.color = colorFromText(firstOf(firstTextOf(calendar.get(), ICAL_COLOR_PROPERTY),
                                         extensionText(calendar.get(), "X-APPLE-CALENDAR-COLOR")));
}

std::string nameOf(const ComponentBlock& block, const std::optional<CalendarItem>& item) {
    const bool hasTitle = item && !item->title.empty();
    return block.name + (hasTitle ? " \"" + item->title + "\"" : "");
}

void readComponent(const ComponentBlock& block, ZoneTable& zones, CalendarText& result) {
    ReadItem read = readItem(block, zones);
    for (const std::string& problem : read.problems) {
        result.problems.push_back({block.line, nameOf(block, read.item) + ": " + problem});
    }
    if (read.item) {
        result.items.push_back(std::move(*read.item));
    }
}

} // namespace

CalendarText readCalendarText(std::string_view text) {
    CalendarText result;
    const ContentBlocks blocks = contentBlocksOf(text);
    result.problems = blocks.problems;
    if (!blocks.hasCalendar && blocks.components.empty()) {
        result.problems.push_back({0, "holds no calendar"});
        return result;
    }
    readProperties(blocks, result);
    ZoneTable zones(blocks.components);
    for (const ComponentBlock& block : blocks.components) {
        if (block.name == "VEVENT" || block.name == "VTODO") {
            readComponent(block, zones, result);
        }
    }
    for (const std::string& name : zones.unknownNames()) {
        result.problems.push_back(
            {0, "the time zone \"" + name + "\" is unknown; its times are taken as local ones"});
    }
    return result;
}

} // namespace plenzo
