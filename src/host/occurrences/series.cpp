#include "host/occurrences/series.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace plenzo {

namespace {

using SeriesKey = std::tuple<ItemKind, std::string, std::size_t>;

// An item without a UID is told apart by its place.
SeriesKey keyOf(const CalendarItem& item, std::size_t index) {
    return {item.kind, item.uid, item.uid.empty() ? index + 1 : 0};
}

/// What an override names: the form and the instant of its recurrence id.
using OverrideKey = std::pair<TimeForm, SystemSeconds>;

OverrideKey keyOf(const CalendarTime& time) {
    return {time.form, time.zone.instantOf(time.local)};
}

/// A series on the way, with its overrides by what they name.
struct GatheredSeries {
    const CalendarItem* master = nullptr;
    std::map<OverrideKey, const CalendarItem*> overrides;
};

void takeNewer(const CalendarItem*& known, const CalendarItem& item) {
    known = known == nullptr || item.sequence >= known->sequence ? &item : known;
}

void addItem(GatheredSeries& series, const CalendarItem& item) {
    takeNewer(item.recurrenceId ? series.overrides[keyOf(*item.recurrenceId)] : series.master,
              item);
}

/// Some programs give a series a recurrence id of its own: one that recurs, without another master,
/// is the master.
void promoteMaster(Series& series) {
    const auto recurring =
        std::find_if(series.overrides.begin(), series.overrides.end(),
                     [](const CalendarItem* item) { return item->recurrence.isRecurring(); });
    if (series.master == nullptr && recurring != series.overrides.end()) {
        series.master = *recurring;
        series.overrides.erase(recurring);
    }
}

bool isSame(const std::optional<CalendarTime>& left, const std::optional<CalendarTime>& right) {
    return left && right ? keyOf(*left) == keyOf(*right) : !left && !right;
}

/// The last override before this time that holds for all that follows it.
const CalendarItem* futureChangeOf(const Series& series, const CalendarTime& identity) {
    const CalendarItem* latest = nullptr;
    const auto instantOf = [](const CalendarTime& time) { return keyOf(time).second; };
    for (const CalendarItem* item : series.overrides) {
        const bool isBefore =
            item->appliesToFuture && instantOf(*item->recurrenceId) < instantOf(identity);
        if (isBefore && (latest == nullptr ||
                         instantOf(*item->recurrenceId) > instantOf(*latest->recurrenceId))) {
            latest = item;
        }
    }
    return latest;
}

} // namespace

const CalendarItem* itemDescribing(const Series& series,
                                   const std::optional<CalendarTime>& identity) {
    for (const CalendarItem* item : series.overrides) {
        if (isSame(item->recurrenceId, identity)) {
            return item;
        }
    }
    const CalendarItem* master = series.master;
    if (master == nullptr || !master->recurrence.isRecurring()) {
        const bool isMaster =
            master != nullptr && isSame(master->start ? master->start : master->end, identity);
        return isMaster ? master : nullptr;
    }
    const CalendarItem* changed = identity ? futureChangeOf(series, *identity) : nullptr;
    return changed != nullptr ? changed : master;
}

std::vector<Series> seriesOf(const std::vector<const CalendarItem*>& items) {
    std::map<SeriesKey, GatheredSeries> byKey;
    for (std::size_t index = 0; index < items.size(); ++index) {
        addItem(byKey[keyOf(*items[index], index)], *items[index]);
    }
    std::vector<Series> all;
    all.reserve(byKey.size());
    for (const auto& [key, gathered] : byKey) {
        Series series{gathered.master, {}};
        for (const auto& [name, item] : gathered.overrides) {
            series.overrides.push_back(item);
        }
        promoteMaster(series);
        all.push_back(std::move(series));
    }
    return all;
}

std::vector<Series> seriesOf(const std::vector<CalendarItem>& items) {
    std::vector<const CalendarItem*> pointers;
    pointers.reserve(items.size());
    for (const CalendarItem& item : items) {
        pointers.push_back(&item);
    }
    return seriesOf(pointers);
}

} // namespace plenzo
