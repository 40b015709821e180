#include "host/edits/command_targets.h"

#include "host/ical/identifiers.h"
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

/// The items that a part of an identifier stands for: the series before its overrides.
std::vector<FiledItem> itemsOf(const Calendar& calendar, ItemKind kind,
                               std::string_view identifier) {
    std::vector<FiledItem> items = itemsOf(calendar);
    std::erase_if(items, [&](const FiledItem& filed) {
        return filed.item->kind != kind || itemIdentifier(*filed.item) != identifier;
    });
    std::stable_partition(items.begin(), items.end(),
                          [](const FiledItem& filed) { return !filed.item->recurrenceId; });
    return items;
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

/// An occurrence with the items that may describe it.
struct FoundOccurrence {
    OccurrenceTarget target;
    std::vector<FiledItem> items;
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
    found.items = itemsOf(*calendar, found.target.kind, parts[1]);
    if (found.items.empty() || (!found.target.identity && day != "undated")) {
        return std::nullopt;
    }
    const FiledItem& filed = found.items.front();
    found.target.itemUid = filed.item->uid;
    found.target.line = filed.item->line;
    found.target.path = filed.file->path;
    return found;
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
    for (const FiledItem& filed : found->items) {
        for (const AlarmDefinition& alarm : filed.item->alarms) {
            if (urlSafe(alarm.uid) == parts[3]) {
                return AlarmTarget{found->target, alarm.uid, *repetition};
            }
        }
    }
    return std::nullopt;
}

} // namespace plenzo
