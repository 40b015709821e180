#include "host/records/series_records.h"

#include "host/records/alarm_entries.h"
#include "host/records/event_record.h"
#include "host/records/repeat_text.h"

#include <algorithm>
#include <map>

namespace plenzo {

namespace {

constexpr std::int64_t yearSeconds = 366 * std::int64_t{86400};

/// More than zones and the length of an all-day event can make out.
constexpr std::int64_t zoneMargin = 4 * std::int64_t{86400};

SystemSeconds asIfUtc(const cctz::civil_second& local) {
    return SystemSeconds(cctz::seconds(local - cctz::civil_second()));
}

cctz::civil_second latestEndOf(const CalendarItem& event) {
    if (event.end) {
        return event.end->local;
    }
    const CalendarDuration duration = event.duration.value_or(CalendarDuration());
    return addDays(event.start->local, duration.days) + duration.seconds;
}

bool isIn(const ExpansionWindow& window, SystemSeconds instant) {
    return instant >= window.from && instant < window.to;
}

/// The records of one series.
class RecordsOfSeries {
public:
    RecordsOfSeries(const Series& series, const Calendar& calendar, const ExpansionWindow& window,
                    Array& records)
        : m_series(series), m_window(window),
          m_records(records), m_context{calendar,
                                        series.master == nullptr
                                            ? std::string()
                                            : repeatText(series.master->recurrence.rules)} {}

    void add(ExpansionBudget& budget) {
        const ExpansionReach widest = reach();
        if (isFarFromWindow(widest)) {
            return;
        }
        m_occurrences = occurrencesOf(m_series, m_window, widest, budget);
        findCarriers();
        const Occurrence* overdue = nullptr;
        for (const Occurrence& occurrence : m_occurrences) {
            if (occurrence.item->kind == ItemKind::Event) {
                addEvent(occurrence);
            } else if (occurrence.isRecurring && isBeforeWindow(occurrence)) {
                overdue = &occurrence;
            } else {
                addToDo(occurrence);
            }
        }
        if (overdue != nullptr) {
            addToDo(*overdue);
        }
    }

private:
    ExpansionReach reach() const {
        ExpansionReach widest;
        if (m_series.master != nullptr) {
            widen(widest, *m_series.master);
        }
        for (const CalendarItem* changed : m_series.overrides) {
            widen(widest, *changed);
        }
        return widest;
    }

    void widen(ExpansionReach& widest, const CalendarItem& item) const {
        const ExpansionReach reach = reachOfAlarms(item.alarms);
        widest.beforeSeconds = std::max(widest.beforeSeconds, reach.beforeSeconds);
        widest.afterSeconds = std::max(widest.afterSeconds, reach.afterSeconds);
        if (item.kind == ItemKind::ToDo) {
            widest.beforeSeconds = std::max(widest.beforeSeconds, 2 * yearSeconds);
        }
        for (const AlarmDefinition& alarm : item.alarms) {
            if (alarm.absoluteTrigger && isIn(m_window, *alarm.absoluteTrigger)) {
                widest.afterSeconds = std::max(widest.afterSeconds, yearSeconds);
            }
        }
    }

    /// Told of the many single events of past years by their wall clocks alone: the rules of their
    /// zones need not be asked.
    bool isFarFromWindow(const ExpansionReach& reach) const {
        const CalendarItem* event = m_series.master;
        const bool isSingle = event != nullptr && event->kind == ItemKind::Event && event->start &&
                              !event->recurrence.isRecurring() && m_series.overrides.empty();
        if (!isSingle || std::max(reach.beforeSeconds, reach.afterSeconds) >= yearSeconds) {
            return false;
        }
        const SystemSeconds start = asIfUtc(event->start->local);
        return start > m_window.to + cctz::seconds(zoneMargin + reach.afterSeconds) ||
               std::max(start, asIfUtc(latestEndOf(*event))) <
                   m_window.from - cctz::seconds(zoneMargin + reach.beforeSeconds);
    }

    /// Chooses, for each absolute alarm, the one occurrence that carries it: the first that is not
    /// before the alarm, or else the last.
    void findCarriers() {
        for (const Occurrence& occurrence : m_occurrences) {
            for (const AlarmDefinition& alarm : occurrence.item->alarms) {
                if (alarm.absoluteTrigger && !isCarriedAtOrAfter(alarm)) {
                    m_carriers[&alarm] = &occurrence;
                }
            }
        }
    }

    bool isCarriedAtOrAfter(const AlarmDefinition& alarm) const {
        const auto carrier = m_carriers.find(&alarm);
        return carrier != m_carriers.end() && dateOf(*carrier->second) >= *alarm.absoluteTrigger;
    }

    SystemSeconds dateOf(const Occurrence& occurrence) const {
        const auto& anchor = occurrence.anchor();
        return anchor ? instantOf(*anchor, m_window.systemZone) : SystemSeconds::max();
    }

    bool isBeforeWindow(const Occurrence& occurrence) const {
        return occurrence.anchor() && dateOf(occurrence) < m_window.from;
    }

    std::vector<AlarmMoment> momentsOf(const Occurrence& occurrence) const {
        std::vector<AlarmMoment> moments = alarmMomentsOf(occurrence, m_window.systemZone);
        std::erase_if(moments, [&](const AlarmMoment& moment) {
            const auto carrier = m_carriers.find(moment.definition);
            return carrier != m_carriers.end() && carrier->second != &occurrence;
        });
        return moments;
    }

    bool isAnyInWindow(const std::vector<AlarmMoment>& moments) const {
        return std::any_of(moments.begin(), moments.end(),
                           [this](const AlarmMoment& moment) { return isIn(m_window, moment.at); });
    }

    bool touchesWindow(const CalendarTime& start, const CalendarTime& end) const {
        const SystemSeconds from = instantOf(start, m_window.systemZone);
        return from < m_window.to &&
               (from >= m_window.from || instantOf(end, m_window.systemZone) > m_window.from);
    }

    void addEvent(const Occurrence& occurrence) {
        const std::vector<AlarmMoment> moments = momentsOf(occurrence);
        const bool hasAlarmInWindow = isAnyInWindow(moments);
        if (!hasAlarmInWindow && !touchesWindow(*occurrence.start, *occurrence.end)) {
            return;
        }
        const std::string uid = occurrenceUid(occurrence, m_context.calendar);
        for (const DayPiece& piece : dayPiecesOf(occurrence, m_window)) {
            const bool isFirst = !piece.laterDay;
            if (touchesWindow(piece.start, piece.end) || (isFirst && hasAlarmInWindow)) {
                Array reminders =
                    isFirst ? reminderEntries(moments, dateOf(occurrence), uid) : Array();
                m_records.append(eventRecord(occurrence, piece, m_context, std::move(reminders)));
            }
        }
    }

    void addToDo(const Occurrence& occurrence) {
        const std::vector<AlarmMoment> moments =
            occurrence.item->isCompleted ? std::vector<AlarmMoment>() : momentsOf(occurrence);
        if (isToDoShown(occurrence) || isAnyInWindow(moments)) {
            const std::string uid = occurrenceUid(occurrence, m_context.calendar);
            m_records.append(toDoRecord(occurrence, m_context,
                                        reminderEntries(moments, dateOf(occurrence), uid)));
        }
    }

    bool isToDoShown(const Occurrence& occurrence) const {
        const bool isDated = occurrence.anchor().has_value();
        if (!occurrence.item->isCompleted) {
            return !isDated || dateOf(occurrence) < m_window.to;
        }
        const auto& completedAt = occurrence.item->completedAt;
        return (completedAt && isIn(m_window, *completedAt)) ||
               (isDated && isIn(m_window, dateOf(occurrence)));
    }

    const Series& m_series;
    const ExpansionWindow& m_window;
    Array& m_records;
    SeriesContext m_context;
    std::vector<Occurrence> m_occurrences;
    std::map<const AlarmDefinition*, const Occurrence*> m_carriers;
};

} // namespace

void addSeriesRecords(const Series& series, const Calendar& calendar, const ExpansionWindow& window,
                      ExpansionBudget& budget, Array& records) {
    RecordsOfSeries(series, calendar, window, records).add(budget);
}

} // namespace plenzo
