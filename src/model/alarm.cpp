#include "model/alarm.h"

#include <memory>
#include <utility>

namespace plenzo {

Alarm alarmHeaderFromString(std::string headerString) {
    Alarm alarm;
    alarm.headerString = std::move(headerString);
    return alarm;
}

Dictionary dictionaryRepresentation(const Alarm& alarm) {
    Dictionary dictionary;
    if (!alarm.fireDate) {
        return dictionary;
    }
    dictionary.set(keys::fireDate, alarm.fireDate->instant().date());
    if (!alarm.eventDict) {
        return dictionary;
    }
    dictionary.set(keys::eventDict, *alarm.eventDict);
    if (alarm.reminderDict) {
        dictionary.set(keys::reminderDict, *alarm.reminderDict);
    }
    return dictionary;
}

Alarm alarmFromDictionaryRepresentation(const Dictionary& dictionary, const TimeZone& timeZone) {
    Alarm alarm;
    if (const auto date = dictionary.dateForKey(keys::fireDate)) {
        alarm.fireDate = CalendarDate::calendarDateWithDate(Instant(*date), timeZone);
    }
    if (const Dictionary* eventDict = dictionary.dictionaryForKey(keys::eventDict)) {
        alarm.eventDict = std::make_shared<Dictionary>(*eventDict);
    }
    if (const Dictionary* reminderDict = dictionary.dictionaryForKey(keys::reminderDict)) {
        alarm.reminderDict = *reminderDict;
    }
    return alarm;
}

} // namespace plenzo
