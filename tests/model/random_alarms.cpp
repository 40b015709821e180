#include "model/random_alarms.h"

#include "propertylist/known_keys.h"
#include "support/instants.h"

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

namespace plenzo {

std::string RandomAlarms::title() {
    static constexpr const char* letters[] = {"a", "A", "b", "ch", "Z", "ss", "ß", "ae", "ä", "á",
                                              "Å", "ø", "i", "İ",  "ı", "lj", "1", "10", " ", "-"};
    static constexpr const char* marks[] = {"\u0301", "\u0323", "\u0327", "\u0345", "\u0F80"};
    static constexpr const char* ofOtherScripts[] = {
        "٢", "Ω", "ω", "д", "เ", "ก", "\u1100", "\u1161", "가", "日", "か", "カ", "\u0FB2\u0F71",
        "🚮"};
    static constexpr const char* broken[] = {"\uFFFD", "\xff", "\xc3", "\xe6\x97", "\xed\xa0\x80"};
    static constexpr std::span<const char* const> groups[] = {letters, letters, marks,
                                                              ofOtherScripts, broken};
    std::string title;
    for (std::uint32_t count = below(5); count > 0; --count) {
        title += below(30) == 0 ? std::string(1, '\0')
                                : oneOf(oneOf<std::span<const char* const>>(groups));
    }
    return title;
}

std::vector<Alarm> RandomAlarms::alikeAlarms(std::size_t count) {
    std::vector<Alarm> alarms{Alarm()};
    while (alarms.size() < count) {
        Alarm alarm = oneOf<Alarm>(alarms);
        for (std::uint32_t changes = 1 + below(2); changes > 0; --changes) {
            changeOneThing(alarm);
        }
        alarms.push_back(std::move(alarm));
    }
    return alarms;
}

void RandomAlarms::changeOneThing(Alarm& alarm) {
    static constexpr std::array<double, 6> seconds{-1e13, -1, 0, 0.25, 8e8, 1e13};
    static constexpr std::array<std::int64_t, 5> days{0, 1, -1, INT64_MIN, INT64_MAX};
    switch (below(10)) {
    case 0:
        alarm.fireDate.reset();
        break;
    case 1:
        alarm.fireDate = CalendarDate(Instant(oneOf<double>(seconds)),
                                      zone(below(2) == 0 ? "Universal" : "Europe/Berlin"));
        break;
    case 2:
        alarm.fireDay = oneOf<std::int64_t>(days);
        break;
    case 3:
        alarm.eventDict = nullptr;
        break;
    case 4:
        alarm = alarmHeaderFromString(title());
        break;
    default:
        changeRecord(alarm);
    }
}

/// In a record of its own: the alarm that it was made of keeps what it has.
void RandomAlarms::changeRecord(Alarm& alarm) {
    static const std::array<Key, 5> orderKeys{keys::type, keys::holiday, keys::allDay,
                                              keys::priority, keys::title};
    static const std::array<Value, 7> usualValues{0, 1, 2, 99, 100, true, false};
    auto record = std::make_shared<Dictionary>(alarm.eventDict ? *alarm.eventDict : Dictionary());
    const Key& key = oneOf<Key>(orderKeys);
    if (below(5) == 0) {
        record->remove(key);
    } else if (below(3) == 0) {
        record->set(key, nastyValue());
    } else {
        record->set(key, key == keys::title ? Value(title()) : oneOf<Value>(usualValues));
    }
    alarm.eventDict = std::move(record);
}

Key RandomAlarms::recordKey() {
    const std::uint32_t number = below(knownKeyCount + 5);
    return number < knownKeyCount ? Key(knownKeyNames + number)
                                  : Key("unheard of " + std::to_string(number));
}

Value RandomAlarms::nastyReminder() {
    static const std::array<Key, 8> reminderKeys{keys::uid, keys::type, keys::abs,  keys::rel,
                                                 keys::ack, keys::url,  keys::book, keys::to};
    if (below(4) == 0) {
        return nastyValue();
    }
    Dictionary reminder;
    for (std::uint32_t count = below(5); count > 0; --count) {
        reminder.set(oneOf<Key>(reminderKeys), nastyValue());
    }
    return reminder;
}

Dictionary RandomAlarms::recordWithSoundReminders(Instant start) {
    Array reminders{Dictionary{{keys::uid, "first"}}};
    for (std::uint32_t count = below(6); count > 0; --count) {
        reminders.append(nastyReminder());
    }
    reminders.append(Dictionary{{keys::uid, "last"}});
    return {{keys::uid, "e"},          {keys::title, title()},
            {keys::type, 0},           {keys::date, start.date()},
            {keys::end, start.date()}, {keys::rem, std::move(reminders)}};
}

} // namespace plenzo
