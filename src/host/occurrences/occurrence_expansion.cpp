#include "host/occurrences/occurrence_expansion.h"

#include "host/occurrences/date_marks.h"
#include "host/occurrences/item_length.h"
#include "host/occurrences/series_starts.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <utility>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;

const std::optional<CalendarTime>& firstTimeOf(const CalendarItem& item) {
    return item.start ? item.start : item.end;
}

/// The wall clock of `time` as `model` would write it.
cctz::civil_second localLike(const CalendarTime& time, const CalendarTime& model) {
    const bool areZoned = time.form == TimeForm::Zoned && model.form == TimeForm::Zoned;
    return areZoned ? model.zone.localOf(time.zone.instantOf(time.local)) : time.local;
}

/// How far an override moved its instance on the wall clock.
std::int64_t shiftSeconds(const CalendarItem& changed) {
    const auto& start = firstTimeOf(changed);
    return start ? start->local - localLike(*changed.recurrenceId, *start) : 0;
}

/// One expansion of one series.
class SeriesExpansion {
public:
    SeriesExpansion(const Series& series, const ExpansionWindow& window,
                    const ExpansionReach& reach, ExpansionBudget& budget)
        : m_series(series), m_window(window), m_reach(reach), m_budget(budget) {
        for (const CalendarItem* changed : series.overrides) {
            if (changed->appliesToFuture && firstTimeOf(*changed)) {
                m_futureChanges[instantOf(*changed->recurrenceId)] = changed;
            }
        }
    }

    std::vector<Occurrence> occurrences() {
        if (m_series.master != nullptr) {
            addMaster(*m_series.master);
        }
        for (const CalendarItem* changed : m_series.overrides) {
            add(*changed, changed->recurrenceId, firstTimeOf(*changed), true);
        }
        std::stable_sort(m_found.begin(), m_found.end(),
                         [this](const auto& left, const auto& right) {
                             return sortInstant(left) < sortInstant(right);
                         });
        return std::move(m_found);
    }

private:
    void addMaster(const CalendarItem& master) {
        const auto& first = firstTimeOf(master);
        if (!first || !master.recurrence.isRecurring()) {
            if (!first || !overrideMarks(*first).contains(*first)) {
                add(master, first, first, false);
            }
            return;
        }
        const DateMarks overridden = overrideMarks(*first);
        for (const SeriesStart& instance :
             seriesStarts(master, *first, spanFor(*first), m_window.systemZone, m_budget)) {
            if (!overridden.contains(instance.start)) {
                addInstance(master, instance);
            }
        }
    }

    DateMarks overrideMarks(const CalendarTime& first) const {
        DateMarks marks(first, m_window.systemZone);
        for (const CalendarItem* changed : m_series.overrides) {
            marks.add(*changed->recurrenceId);
        }
        return marks;
    }

    // A day more at both ends: a window is one of instants, and zones differ by less than that.
    CivilSpan spanFor(const CalendarTime& first) const {
        const CalendarZone& zone = zoneOf(first, m_window.systemZone);
        const std::int64_t before = m_reach.beforeSeconds + longestLengthSeconds() + daySeconds;
        const std::int64_t shift = largestShiftSeconds();
        return {zone.localOf(m_window.from) - before - shift,
                zone.localOf(m_window.to) + m_reach.afterSeconds + daySeconds + shift};
    }

    std::int64_t longestLengthSeconds() const {
        std::int64_t longest = lengthSeconds(*m_series.master, m_window.systemZone);
        for (const CalendarItem* changed : m_series.overrides) {
            longest = std::max(longest, lengthSeconds(*changed, m_window.systemZone));
        }
        return longest;
    }

    std::int64_t largestShiftSeconds() const {
        std::int64_t largest = 0;
        for (const auto& [instant, changed] : m_futureChanges) {
            largest = std::max(largest, std::abs(shiftSeconds(*changed)));
        }
        return largest;
    }

    void addInstance(const CalendarItem& master, const SeriesStart& instance) {
        if (const CalendarItem* changed = futureChangeOf(instance.start)) {
            const CalendarTime& model = *firstTimeOf(*changed);
            const auto local = localLike(instance.start, model) + shiftSeconds(*changed);
            add(*changed, instance.start, movedTo(model, local), true);
            return;
        }
        add(master, instance.start, instance.start, true);
        if (instance.period != nullptr && !master.isCancelled) {
            m_found.back().end = periodEnd(*instance.period);
        }
    }

    /// The last override before this start that holds for all that follows it.
    const CalendarItem* futureChangeOf(const CalendarTime& start) const {
        const auto next = m_futureChanges.lower_bound(instantOf(start));
        return next == m_futureChanges.begin() ? nullptr : std::prev(next)->second;
    }

    std::optional<CalendarTime> periodEnd(const ExtraDate& period) const {
        CalendarItem item;
        item.start = period.start;
        item.end = period.end;
        item.duration = period.duration;
        return endOf(item, period.start, m_window.systemZone);
    }

    void add(const CalendarItem& item, const std::optional<CalendarTime>& identity,
             const std::optional<CalendarTime>& start, bool isRecurring) {
        if (item.isCancelled) {
            return;
        }
        Occurrence occurrence{&item, identity, start, std::nullopt, isRecurring};
        if (start && item.start) {
            occurrence.end = endOf(item, *start, m_window.systemZone);
        } else if (start) { // a to-do with nothing but its due time
            occurrence.end = std::exchange(occurrence.start, std::nullopt);
        }
        m_found.push_back(std::move(occurrence));
    }

    SystemSeconds instantOf(const CalendarTime& time) const {
        return plenzo::instantOf(time, m_window.systemZone);
    }

    SystemSeconds sortInstant(const Occurrence& occurrence) const {
        return occurrence.anchor() ? instantOf(*occurrence.anchor()) : SystemSeconds::max();
    }

    const Series& m_series;
    const ExpansionWindow& m_window;
    const ExpansionReach& m_reach;
    ExpansionBudget& m_budget;
    std::map<SystemSeconds, const CalendarItem*> m_futureChanges;
    std::vector<Occurrence> m_found;
};

} // namespace

const std::optional<CalendarTime>& Occurrence::anchor() const {
    const bool isPlacedByStart = item->kind == ItemKind::Event || !end;
    return isPlacedByStart ? start : end;
}

bool areSameDays(const ExpansionWindow& one, const ExpansionWindow& other) {
    return one.from == other.from && one.to == other.to;
}

ExpansionWindow expansionWindow(SystemSeconds now, int days, const CalendarZone& systemZone) {
    const cctz::civil_second today(cctz::civil_day(systemZone.localOf(now)));
    return {now, systemZone.instantOf(today), systemZone.instantOf(addDays(today, days)),
            systemZone};
}

std::vector<Occurrence> occurrencesOf(const Series& series, const ExpansionWindow& window,
                                      const ExpansionReach& reach, ExpansionBudget& budget) {
    return SeriesExpansion(series, window, reach, budget).occurrences();
}

} // namespace plenzo
