#include "host/edits/command_targets.h"

#include "host/ical/alarm_reader.h"
#include "host/ical/identifiers.h"
#include "host/occurrences/series.h"
#include "host/records/event_record.h"

#include <algorithm>
#include <charconv>

namespace plenzo {

namespace {

constexpr std::string_view toDoMark = "todo-";

std::vector<std::string_view> partsOf(std::string_view uid) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = uid.find('~');
        parts.push_back(uid.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        uid.remove_prefix(end + 1);
    }
}

/// The items that a part of an identifier stands for.
std::vector<FiledItem> itemsOf(const Calendar& calendar, ItemKind kind,
                               std::string_view identifier) {
    std::vector<FiledItem> items = itemsOf(calendar);
    std::erase_if(items, [&](const FiledItem& filed) {
        return filed.item->kind != kind || itemIdentifier(*filed.item) != identifier;
    });
    return items;
}

/// Several files may hold copies of a series, or parts of it: the one of the item that describes
/// the occurrence in the records. The first item, when the occurrence is gone.
FiledItem describing(const std::vector<FiledItem>& items,
                     const std::optional<CalendarTime>& identity) {
    std::vector<const CalendarItem*> pointers;
    pointers.reserve(items.size());
    for (const FiledItem& filed : items) {
        pointers.push_back(filed.item);
    }
    const CalendarItem* found = nullptr;
    for (const Series& series : seriesOf(pointers)) {
        const CalendarItem* item = itemDescribing(series, identity);
        found = item != nullptr ? item : found;
    }
    const auto filed = std::find_if(items.begin(), items.end(),
                                    [found](const FiledItem& one) { return one.item == found; });
    return filed == items.end() ? items.front() : *filed;
}

/// "r3" as 3; nothing for anything else.
std::optional<int> repetitionOf(std::string_view part) {
    int number = 0;
    if (!part.starts_with('r')) {
        return std::nullopt;
    }
    part.remove_prefix(1);
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
    const bool isNumber = error == std::errc() && end == part.data() + part.size() && number > 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// An occurrence with the item that describes it.
struct FoundOccurrence {
    OccurrenceTarget target;
    const CalendarItem* item = nullptr;
};

std::optional<FoundOccurrence> find(const Calendar* calendar,
                                    const std::vector<std::string_view>& parts) {
    if (calendar == nullptr || parts.size() < 3) {
        return std::nullopt;
    }
    std::string_view day = parts[2];
    FoundOccurrence found;
    found.target.kind = day.starts_with(toDoMark) ? ItemKind::ToDo : ItemKind::Event;
    day.remove_prefix(found.target.kind == ItemKind::ToDo ? toDoMark.size() : 0);
    found.target.identity = identityFromText(day);
    const auto items = itemsOf(*calendar, found.target.kind, parts[1]);
    if (items.empty() || (!found.target.identity && day != "undated")) {
        return std::nullopt;
    }
    const FiledItem filed = describing(items, found.target.identity);
    found.item = filed.item;
    found.target.itemUid = filed.item->uid;
    found.target.line = filed.item->line;
    found.target.path = filed.file->path;
    return found;
}

/// An edit may have given the alarm a UID that whoever sent the command does not know yet.
const AlarmDefinition* alarmOf(const CalendarItem& item, std::string_view identifier) {
    const auto known = std::find_if(item.alarms.begin(), item.alarms.end(), [&](const auto& alarm) {
        return urlSafe(alarm.uid) == identifier;
    });
    if (known != item.alarms.end()) {
        return &*known;
    }
    const std::vector<std::string> former = derivedUidsOf(item.alarms);
    const auto found = std::find_if(former.begin(), former.end(), [&](const std::string& uid) {
        return urlSafe(uid) == identifier;
    });
    return found == former.end() ? nullptr : &*(item.alarms.begin() + (found - former.begin()));
}

} // namespace

const Calendar* CommandTargets::calendar(std::string_view uid) const {
    const std::string_view calendarUid = uid.substr(0, uid.find('~'));
    const auto& all = m_set.calendars;
    const auto found = std::find_if(all.begin(), all.end(), [calendarUid](const Calendar& one) {
        return one.uid == calendarUid;
    });
    return found == all.end() ? nullptr : &*found;
}

std::optional<OccurrenceTarget> CommandTargets::occurrence(std::string_view eventUid) const {
    const auto parts = partsOf(eventUid);
    const auto found = find(calendar(eventUid), parts);
    const bool isOfLaterDay = parts.size() == 4 && identityFromText(parts[3]).has_value();
    return found && (parts.size() == 3 || isOfLaterDay) ? std::optional(found->target)
                                                        : std::nullopt;
}

std::optional<AlarmTarget> CommandTargets::alarm(std::string_view reminderUid) const {
    const auto parts = partsOf(reminderUid);
    const auto found = find(calendar(reminderUid), parts);
    const auto repetition = parts.size() == 5 ? repetitionOf(parts[4]) : std::optional(0);
    if (!found || parts.size() < 4 || parts.size() > 5 || !repetition) {
        return std::nullopt;
    }
    const AlarmDefinition* alarm = alarmOf(*found->item, parts[3]);
    return alarm == nullptr ? std::nullopt
                            : std::optional(AlarmTarget{found->target, alarm->uid, *repetition});
}

} // namespace plenzo
