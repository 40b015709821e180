#include "host/occurrences/series_starts.h"

#include "host/occurrences/date_marks.h"

#include <map>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;

/// The recurrence set on the way.
class RecurrenceSet {
public:
    RecurrenceSet(const CalendarTime& first, const CivilSpan& span, const CalendarZone& systemZone,
                  ExpansionBudget& budget)
        : m_first(first), m_span(span), m_systemZone(systemZone), m_budget(budget) {
        insert(first, nullptr);
    }

    void addRules(const std::vector<std::string>& rules) {
        for (const cctz::civil_second& local : ruleTimes(rules)) {
            insert(movedTo(m_first, local), nullptr);
        }
    }

    void addDates(const std::vector<ExtraDate>& dates) {
        for (const ExtraDate& date : dates) {
            if (isNearSpan(date.start)) {
                insert(date.start, date.end || date.duration ? &date : nullptr);
            }
        }
    }

    std::vector<SeriesStart> without(const std::vector<CalendarTime>& dates,
                                     const std::vector<std::string>& rules) {
        DateMarks excluded(m_first, m_systemZone);
        for (const CalendarTime& date : dates) {
            excluded.add(date);
        }
        for (const cctz::civil_second& local : ruleTimes(rules)) {
            excluded.add(movedTo(m_first, local));
        }
        std::vector<SeriesStart> starts;
        starts.reserve(m_byInstant.size());
        for (const auto& [instant, start] : m_byInstant) {
            if (!excluded.contains(start.start)) {
                starts.push_back(start);
            }
        }
        return starts;
    }

private:
    // By instant, so that a date that a rule and RDATE both give is one; a period keeps its length.
    void insert(const CalendarTime& start, const ExtraDate* period) {
        SeriesStart& entry = m_byInstant[instantOf(start, m_systemZone)];
        entry = {start, period == nullptr ? entry.period : period};
    }

    std::vector<cctz::civil_second> ruleTimes(const std::vector<std::string>& rules) {
        std::vector<cctz::civil_second> all;
        for (const std::string& text : rules) {
            if (const auto rule = RecurrenceRule::fromText(text)) {
                const auto times = rule->localTimes(m_first, m_span, m_systemZone, m_budget);
                all.insert(all.end(), times.begin(), times.end());
            }
        }
        return all;
    }

    // The date may be in another zone than the series.
    bool isNearSpan(const CalendarTime& time) const {
        return time.local >= m_span.from - daySeconds && time.local < m_span.to + daySeconds;
    }

    const CalendarTime& m_first;
    const CivilSpan& m_span;
    const CalendarZone& m_systemZone;
    ExpansionBudget& m_budget;
    std::map<SystemSeconds, SeriesStart> m_byInstant;
};

} // namespace

std::vector<SeriesStart> seriesStarts(const CalendarItem& master, const CalendarTime& first,
                                      const CivilSpan& span, const CalendarZone& systemZone,
                                      ExpansionBudget& budget) {
    const RecurrenceProperties& properties = master.recurrence;
    RecurrenceSet set(first, span, systemZone, budget);
    set.addRules(properties.rules);
    set.addDates(properties.extraDates);
    return set.without(properties.exceptionDates, properties.exceptionRules);
}

} // namespace plenzo
