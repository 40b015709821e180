#include "host/records/event_record.h"

#include "host/ical/identifiers.h"
#include "host/records/agent_date.h"
#include "propertylist/known_keys.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace plenzo {

namespace {

enum class ItemType : std::uint8_t { Event, ToDo };

std::string dayText(const cctz::civil_day& day) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02d", static_cast<int>(day.year()),
                  day.month(), day.day());
    return text.data();
}

std::string timeText(const cctz::civil_second& time) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "T%02d%02d%02d", time.hour(), time.minute(),
                  time.second());
    return dayText(cctz::civil_day(time)) + text.data();
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

std::string lowercase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

bool hasCategory(const CalendarItem& item, std::string_view singular, std::string_view plural) {
    return std::any_of(item.categories.begin(), item.categories.end(),
                       [&](const std::string& category) {
                           const std::string name = lowercase(category);
                           return name == singular || name == plural;
                       });
}

void setText(Dictionary& record, const Key& key, const std::string& text) {
    if (!text.empty()) {
        record.set(key, text);
    }
}

void setFlag(Dictionary& record, const Key& key, bool flag) {
    if (flag) {
        record.set(key, true);
    }
}

void setForm(Dictionary& record, TimeForm form) {
    setFlag(record, keys::allDay, form == TimeForm::Date);
    setFlag(record, keys::floating, form == TimeForm::Floating);
}

void setTexts(Dictionary& record, const CalendarItem& item, const SeriesContext& context) {
    setText(record, keys::location, item.location);
    setText(record, keys::notes, item.notes);
    setText(record, keys::url, item.url);
    setText(record, keys::repeat, context.repeatText);
    setText(record, keys::tags, joined(item.categories));
    setText(record, keys::attendees, joined(item.attendees));
}

void setKind(Dictionary& record, const CalendarItem& item) {
    setFlag(record, keys::holiday, hasCategory(item, "holiday", "holidays"));
    setFlag(record, keys::birthday, hasCategory(item, "birthday", "birthdays"));
    setFlag(record, keys::anniversary, hasCategory(item, "anniversary", "anniversaries"));
}

void setCalendar(Dictionary& record, const Calendar& calendar) {
    setFlag(record, keys::read, calendar.isReadOnly);
    record.set(keys::cuid, calendar.uid);
    record.set(keys::cal, calendar.title);
    record.set(keys::colInt, calendar.color);
}

Dictionary commonRecord(std::string_view uid, ItemType type, const Occurrence& occurrence,
                        const SeriesContext& context) {
    Dictionary record{{keys::uid, uid},
                      {keys::type, static_cast<int>(type)},
                      {keys::title, shownTitle(*occurrence.item)}};
    setTexts(record, *occurrence.item, context);
    setKind(record, *occurrence.item);
    setCalendar(record, context.calendar);
    return record;
}

void setReminders(Dictionary& record, Array reminders) {
    if (!reminders.empty()) {
        record.set(keys::rem, std::move(reminders));
    }
}

/// The end of an all-day record is its last day, not the day after it.
Date recordEnd(const DayPiece& piece) {
    return piece.end.form == TimeForm::Date
               ? agentDate(
                     movedTo(piece.end, std::max(piece.start.local, addDays(piece.end.local, -1))))
               : agentDate(piece.end);
}

void setCompletion(Dictionary& record, const CalendarItem& item) {
    setFlag(record, keys::completed, item.isCompleted);
    if (item.isCompleted && item.completedAt) {
        record.set(keys::completionDate, agentDate(*item.completedAt));
    }
}

} // namespace

std::string identityText(const CalendarTime& time) {
    switch (time.form) {
    case TimeForm::Date:
        return dayText(cctz::civil_day(time.local));
    case TimeForm::Floating:
        return timeText(time.local);
    case TimeForm::Zoned:
        break;
    }
    return timeText(CalendarZone().localOf(time.zone.instantOf(time.local))) + "Z";
}

std::optional<CalendarTime> identityFromText(std::string_view text) {
    const bool isUniversal = text.ends_with('Z');
    text.remove_suffix(isUniversal ? 1 : 0);
    const auto number = [text](std::size_t begin, std::size_t length) {
        int result = 0;
        for (const char digit : text.substr(begin, length)) {
            result = 10 * result + (digit - '0'); // checked below
        }
        return result;
    };
    const bool isTime = text.size() == 15 && text[8] == 'T';
    if (!isTime && (text.size() != 8 || isUniversal)) {
        return std::nullopt;
    }
    const CalendarTime time{!isTime       ? TimeForm::Date
                            : isUniversal ? TimeForm::Zoned
                                          : TimeForm::Floating,
                            isTime ? cctz::civil_second(number(0, 4), number(4, 2), number(6, 2),
                                                        number(9, 2), number(11, 2), number(13, 2))
                                   : cctz::civil_second(number(0, 4), number(4, 2), number(6, 2)),
                            {}};
    const bool isNumbered = text.find_first_not_of("0123456789T") == std::string_view::npos;
    const std::string whole = std::string(text) + (isUniversal ? "Z" : "");
    return isNumbered && identityText(time) == whole ? std::optional(time) : std::nullopt;
}

std::string itemIdentifier(const CalendarItem& item) {
    return item.uid.empty() ? "line-" + std::to_string(item.line) : urlSafe(item.uid);
}

std::string occurrenceUid(const Occurrence& occurrence, const Calendar& calendar) {
    const CalendarItem& item = *occurrence.item;
    const std::string day = occurrence.identity ? identityText(*occurrence.identity) : "undated";
    return joinedIdentifiers(joinedIdentifiers(calendar.uid, itemIdentifier(item)),
                             item.kind == ItemKind::ToDo ? "todo-" + day : day);
}

Dictionary eventRecord(const Occurrence& occurrence, const DayPiece& piece,
                       const SeriesContext& context, Array reminders) {
    std::string uid = occurrenceUid(occurrence, context.calendar);
    if (piece.laterDay) {
        uid = joinedIdentifiers(uid, dayText(*piece.laterDay));
    }
    Dictionary record = commonRecord(uid, ItemType::Event, occurrence, context);
    record.set(keys::date, agentDate(piece.start));
    record.set(keys::end, recordEnd(piece));
    setForm(record, piece.start.form);
    setReminders(record, std::move(reminders));
    return record;
}

Dictionary toDoRecord(const Occurrence& occurrence, const SeriesContext& context, Array reminders) {
    const CalendarItem& item = *occurrence.item;
    Dictionary record = commonRecord(occurrenceUid(occurrence, context.calendar), ItemType::ToDo,
                                     occurrence, context);
    if (const auto& due = occurrence.anchor()) {
        record.set(keys::date, agentDate(*due));
        setForm(record, due->form);
        setFlag(record, keys::carry, !item.isCompleted);
    }
    if (item.priority > 0) {
        record.set(keys::priority, item.priority);
    }
    setCompletion(record, item);
    setReminders(record, std::move(reminders));
    return record;
}

} // namespace plenzo
