#include "ui/alarm/alarm_row.h"

#include "propertylist/known_keys.h"

namespace plenzo {

namespace {

/// What stands where an event has no title.
constexpr const char* noTitle = "(null)";

constexpr std::int64_t toDoType = 1;

std::string text(const Dictionary& eventDict, const Key& key, std::string_view otherwise) {
    return std::string(eventDict.stringForKey(key).value_or(otherwise));
}

std::optional<Color> color(const Dictionary& eventDict) {
    const Value* value = eventDict.find(keys::color);
    return value != nullptr ? value->color() : std::nullopt;
}

} // namespace

AlarmRow alarmRow(std::uint64_t row, const Alarm& alarm, const AlarmDateText& dateText) {
    const Dictionary& eventDict = *alarm.eventDict;
    return {.row = row,
            .alarm = alarm,
            .title = text(eventDict, keys::title, noTitle),
            .location = text(eventDict, keys::location, alarm.eventText(keys::notes)),
            .color = color(eventDict),
            .calendar = text(eventDict, keys::cal, {}),
            .date = dateText.dateStringForAlarm(alarm, AlarmDateText::SeenFrom::Now).text,
            .isToDo = eventDict.integerForKey(keys::type) == toDoType,
            .done = eventDict.boolForKey(keys::completed),
            .readOnly = eventDict.boolForKey(keys::read)};
}

} // namespace plenzo
