#include "core/simulation/simulated_record.h"

#include "propertylist/known_keys.h"
#include "support/instants.h"

namespace plenzo::simulation {

namespace {

Dictionary dictionaryOf(const Reminder& reminder) {
    Dictionary dictionary{{keys::uid, reminder.uid}, {keys::type, reminder.type}};
    if (reminder.absolute) {
        dictionary.set(keys::abs, reminder.absolute->date());
    } else {
        dictionary.set(keys::rel, reminder.relativeSeconds);
    }
    if (reminder.acknowledged) {
        dictionary.set(keys::ack, reminder.acknowledged->date());
    }
    return dictionary;
}

std::optional<Instant> localStart(const Record& record, const TimeZone& zone) {
    if (record.kind == Record::Kind::Undated) {
        return std::nullopt;
    }
    if (record.kind == Record::Kind::Timed) {
        return record.start;
    }
    const DateFields wall = CalendarDate(record.start, TimeZone::universal()).fields();
    const bool isAllDay = record.kind == Record::Kind::AllDay;
    return CalendarDate::dateWithYear(wall.year, wall.month, wall.day, isAllDay ? 0 : wall.hour,
                                      isAllDay ? 0 : wall.minute, isAllDay ? 0 : wall.second, false,
                                      zone)
        .value()
        .instant();
}

} // namespace

Dictionary dictionaryOf(const Record& record) {
    Array reminders;
    for (const Reminder& reminder : record.reminders) {
        reminders.append(Value(dictionaryOf(reminder)));
    }
    Dictionary dictionary{
        {keys::uid, record.uid}, {keys::title, record.uid}, {keys::rem, std::move(reminders)}};
    if (record.kind != Record::Kind::Undated) {
        dictionary.set(keys::date, record.start.date());
    }
    if (record.kind == Record::Kind::AllDay) {
        dictionary.set(keys::allDay, true);
    }
    if (record.kind == Record::Kind::Floating) {
        dictionary.set(keys::floating, true);
    }
    return dictionary;
}

std::optional<Instant> dueDate(const Record& record, const Reminder& reminder,
                               const TimeZone& zone) {
    constexpr int noAction = 3;
    constexpr int proximity = 10;
    if (reminder.type == noAction) {
        return std::nullopt;
    }
    const auto start = localStart(record, zone);
    const bool isRelative = !reminder.absolute;
    if (isRelative && (!start || reminder.type == proximity)) {
        return std::nullopt;
    }
    const Instant due = isRelative ? *start + reminder.relativeSeconds : *reminder.absolute;
    const bool isAcknowledged = reminder.acknowledged && *reminder.acknowledged > due;
    return isAcknowledged ? std::nullopt : std::optional(due);
}

} // namespace plenzo::simulation
