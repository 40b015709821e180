#include "host/series.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

namespace plenzo {

namespace {

using SeriesKey = std::tuple<ItemKind, std::string, std::size_t>;

// An item without a UID is told apart by its place.
SeriesKey keyOf(const CalendarItem& item, std::size_t index) {
    return {item.kind, item.uid, item.uid.empty() ? index + 1 : 0};
}

bool nameTheSame(const CalendarTime& left, const CalendarTime& right) {
    return left.form == right.form &&
           left.zone.instantOf(left.local) == right.zone.instantOf(right.local);
}

void addOverride(Series& series, const CalendarItem& item) {
    for (const CalendarItem*& known : series.overrides) {
        if (nameTheSame(*known->recurrenceId, *item.recurrenceId)) {
            known = item.sequence >= known->sequence ? &item : known;
            return;
        }
    }
    series.overrides.push_back(&item);
}

void addItem(Series& series, const CalendarItem& item) {
    if (item.recurrenceId) {
        addOverride(series, item);
    } else if (series.master == nullptr || item.sequence >= series.master->sequence) {
        series.master = &item;
    }
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

} // namespace

std::vector<Series> seriesOf(const std::vector<CalendarItem>& items) {
    std::map<SeriesKey, Series> byKey;
    for (std::size_t index = 0; index < items.size(); ++index) {
        addItem(byKey[keyOf(items[index], index)], items[index]);
    }
    std::vector<Series> all;
    all.reserve(byKey.size());
    for (auto& [key, series] : byKey) {
        promoteMaster(series);
        all.push_back(std::move(series));
    }
    return all;
}

} // namespace plenzo
