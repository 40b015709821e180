#include "host/store/calendar_expansion.h"

#include "host/records/event_record.h"
#include "host/records/series_records.h"

#include <algorithm>

namespace plenzo {

namespace {

bool isBefore(const FiledItem& left, const FiledItem& right) {
    const int order = left.file->path.compare(right.file->path);
    return order < 0 || (order == 0 && left.item < right.item);
}

bool isRecurring(const Series& series) {
    return series.master != nullptr && series.master->recurrence.isRecurring();
}

/// With its line.
std::pair<int, std::string> problemOf(const Series& series, const Calendar& calendar) {
    const CalendarItem& item =
        series.master == nullptr ? *series.overrides.front() : *series.master;
    return {item.line, "calendar \"" + calendar.title + "\", line " + std::to_string(item.line) +
                           ": \"" + item.title + "\" repeats too often; the rest is left out"};
}

std::vector<Series> seriesOfItems(const std::vector<FiledItem>& items) {
    std::vector<const CalendarItem*> pointers;
    pointers.reserve(items.size());
    for (const FiledItem& item : items) {
        pointers.push_back(item.item);
    }
    return seriesOf(pointers);
}

} // namespace

void CalendarExpansion::update(const Calendar& calendar, const ExpansionWindow& window,
                               RecordChanges& changes) {
    takeFiles(calendar.files);
    takeAppearance(calendar, window);
    m_calendar = calendar;
    if (!expandAlone()) {
        expandInOrder();
    }
    m_isAmple = isAmple(unused());
    tellChanges(changes);
}

void CalendarExpansion::appendTo(Array& records) const {
    for (const auto& [key, group] : m_groups) {
        for (const Value& record : group.records) {
            records.append(record);
        }
    }
}

/// Both are in the order of their paths, so that one walk finds what has changed.
void CalendarExpansion::takeFiles(const std::vector<CalendarFilePointer>& files) {
    auto known = m_calendar.files.begin();
    const auto end = m_calendar.files.end();
    for (const CalendarFilePointer& file : files) {
        for (; known != end && (*known)->path < file->path; ++known) {
            removeItems(**known);
        }
        const bool isKnown = known != end && (*known)->path == file->path;
        if (isKnown && *known == file) {
            ++known;
            continue;
        }
        if (isKnown) {
            removeItems(**known++);
        }
        addItems(*file);
    }
    for (; known != end; ++known) {
        removeItems(**known);
    }
}

void CalendarExpansion::addItems(const CalendarFile& file) {
    m_itemCount += file.items.size();
    for (const CalendarItem& item : file.items) {
        const auto [group, isNew] = m_groups.try_emplace({item.kind, itemIdentifier(item)});
        std::vector<FiledItem>& items = group->second.items;
        const FiledItem added{&file, &item};
        items.insert(std::upper_bound(items.begin(), items.end(), added, isBefore), added);
        makeStale(group);
    }
}

void CalendarExpansion::removeItems(const CalendarFile& file) {
    m_itemCount -= file.items.size();
    for (const CalendarItem& item : file.items) {
        const auto group = m_groups.find({item.kind, itemIdentifier(item)});
        std::erase_if(group->second.items,
                      [&](const FiledItem& filed) { return filed.item == &item; });
        makeStale(group);
    }
}

/// What all records have in common.
void CalendarExpansion::takeAppearance(const Calendar& calendar, const ExpansionWindow& window) {
    const bool isSameWindow = m_window && areSameDays(*m_window, window);
    const bool looksTheSame =
        calendar.uid == m_calendar.uid && calendar.title == m_calendar.title &&
        calendar.color == m_calendar.color && calendar.isReadOnly == m_calendar.isReadOnly;
    m_window = window;
    if (isSameWindow && looksTheSame) {
        return;
    }
    for (auto group = m_groups.begin(); group != m_groups.end(); ++group) {
        makeStale(group);
    }
}

void CalendarExpansion::note(Groups::iterator group) {
    if (!group->second.isNoted) {
        group->second.isNoted = true;
        group->second.recordsBefore = group->second.records;
        m_noted.push_back(group);
    }
}

void CalendarExpansion::makeStale(Groups::iterator group) {
    note(group);
    if (!group->second.isStale) {
        group->second.isStale = true;
        m_used = minus(m_used, group->second.cost.used);
        group->second.cost = {};
    }
}

ExpansionBudget CalendarExpansion::unused() const {
    return minus(calendarBudget(m_itemCount), m_used);
}

/// As long as there is enough for every series, none depends on the others. False when there is
/// not, and they have to be expanded in their order.
bool CalendarExpansion::expandAlone() {
    if (!m_isAmple) {
        return false;
    }
    for (const auto& group : m_noted) {
        if (!isAmple(unused())) {
            return false;
        }
        expand(group->second, unused());
    }
    return isAmple(unused());
}

void CalendarExpansion::expandInOrder() {
    ExpansionBudget left = calendarBudget(m_itemCount);
    for (auto entry = m_groups.begin(); entry != m_groups.end(); ++entry) {
        Group& group = entry->second;
        if (group.isStale || !wouldBeSame(group.cost, left)) {
            makeStale(entry);
            expand(group, left);
        }
        left = minus(left, group.cost.used);
    }
}

void CalendarExpansion::expand(Group& group, const ExpansionBudget& left) {
    const std::vector<Series> all = seriesOfItems(group.items);
    group.records = {};
    group.cost = {left, {}, all.size() < 2, false};
    for (const Series& series : all) {
        const ExpansionBudget used = expand(series, group, minus(left, group.cost.used));
        group.cost.used = plus(group.cost.used, used);
    }
    m_used = plus(m_used, group.cost.used);
    group.isStale = false;
}

ExpansionBudget CalendarExpansion::expand(const Series& series, Group& group,
                                          const ExpansionBudget& left) {
    const ExpansionBudget allowed = seriesBudget(left);
    ExpansionBudget budget = allowed;
    addSeriesRecords(series, m_calendar, *m_window, budget, group.records);
    group.cost.isSpent = group.cost.isSpent || budget.isSpent();
    if (budget.isSpent() && isRecurring(series)) {
        m_problems.insert(problemOf(series, m_calendar));
    }
    return minus(allowed, budget);
}

void CalendarExpansion::tellChanges(RecordChanges& changes) {
    for (const auto& noted : m_noted) {
        Group& group = noted->second;
        for (const Value& record : group.recordsBefore) {
            changes.before.append(record);
        }
        for (const Value& record : group.records) {
            changes.after.append(record);
        }
        group.recordsBefore = {};
        group.isNoted = false;
        if (group.items.empty()) {
            m_groups.erase(noted);
        }
    }
    m_noted.clear();
    for (const auto& [line, problem] : m_problems) {
        changes.problems.push_back(problem);
    }
    m_problems.clear();
}

} // namespace plenzo
