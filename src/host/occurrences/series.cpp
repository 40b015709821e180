#include "host/occurrences/series.h"

#include <algorithm>
#include <map>
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

} // namespace

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
