#include "host/edits/calendar_edits.h"
#include "host/edits/series_text.h"
#include "host/edits/time_lines.h"
#include "host/ical/recurrence_rule.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace plenzo {

namespace {

constexpr ExpansionBudget budgetOfSearch{400'000, 10'000};
constexpr cctz::seconds oneDay(86400);
constexpr cctz::seconds fourYears(std::int64_t{4} * 366 * 86400);
constexpr std::size_t mostCompared = 100;

/// Where an occurrence of a series stands, to compare two series.
struct Place {
    SystemSeconds identity;
    std::optional<SystemSeconds> start;
    std::optional<SystemSeconds> end;

    bool operator==(const Place&) const = default;
};

void setState(ContentComponent& component, Completion completion, SystemSeconds now,
              std::string_view lineEnding) {
    if (completion == Completion::Done) {
        component.setProperty("STATUS", "STATUS:COMPLETED", lineEnding);
        component.setProperty("COMPLETED", "COMPLETED:" + universalTimeText(now), lineEnding);
        component.setProperty("PERCENT-COMPLETE", "PERCENT-COMPLETE:100", lineEnding);
    } else {
        component.setProperty("STATUS", "STATUS:NEEDS-ACTION", lineEnding);
        component.removeProperties("COMPLETED");
        component.removeProperties("PERCENT-COMPLETE");
    }
    markChanged(component, now, lineEnding);
}

/// The rule with another COUNT, its other parts as they stand.
std::string withCount(std::string_view rule, std::int64_t count) {
    std::string result;
    while (!rule.empty()) {
        const std::string_view part = rule.substr(0, rule.find(';'));
        const bool isCount =
            part.size() > 6 && (part[0] == 'C' || part[0] == 'c') && part.find('=') == 5;
        result += result.empty() ? "" : ";";
        result += isCount ? "COUNT=" + std::to_string(count) : std::string(part);
        rule.remove_prefix(std::min(part.size() + 1, rule.size()));
    }
    return result;
}

/// Moves a series to the occurrence after the one that was completed.
class SeriesAdvance {
public:
    SeriesAdvance(SeriesText& text, const EditContext& context)
        : m_text(text), m_context(context) {}

    void advance() {
        const CalendarItem* master = m_text.series().master;
        if (master == nullptr || m_text.occurrence().item != master || !isPlain(*master)) {
            return;
        }
        const auto occurrences = occurrencesFrom(m_text.series(), instantOf(*firstOf(*master)));
        const auto next = nextOf(occurrences);
        if (!next || isEarlierLeft(occurrences)) {
            return;
        }
        ContentComponent& component = m_text.componentOf(*master);
        const auto moved = component.copy();
        if (!move(*moved, *master, *next) || !keepsWhatFollows(*moved, *next)) {
            return;
        }
        for (const char* name : {"DTSTART", "DUE", "RRULE"}) {
            if (const ContentLine* line = moved->property(name)) {
                component.setProperty(name, line->content(), m_text.lineEnding());
            }
        }
        markChanged(component, m_context.now, m_text.lineEnding());
    }

private:
    /// One rule and nothing besides that would have to move with it.
    bool isPlain(const CalendarItem& master) const {
        const auto& overrides = m_text.series().overrides;
        const RecurrenceProperties& recurrence = master.recurrence;
        return recurrence.rules.size() == 1 && recurrence.exceptionRules.empty() &&
               recurrence.extraDates.empty() && firstOf(master).has_value() &&
               std::none_of(overrides.begin(), overrides.end(),
                            [](const CalendarItem* item) { return item->appliesToFuture; });
    }

    static const std::optional<CalendarTime>& firstOf(const CalendarItem& item) {
        return item.start ? item.start : item.end;
    }

    SystemSeconds instantOf(const CalendarTime& time) const {
        return plenzo::instantOf(time, m_text.systemZone());
    }

    /// The series' own occurrences from there on, in the order of their identities; none when they
    /// are too many.
    std::vector<Occurrence> occurrencesFrom(const Series& series, SystemSeconds from) const {
        const SystemSeconds last = instantOf(*m_text.occurrence().identity) + fourYears;
        const ExpansionWindow window{m_context.now, from - oneDay, last, m_text.systemZone()};
        ExpansionBudget budget = budgetOfSearch;
        std::vector<Occurrence> found = occurrencesOf(series, window, {}, budget);
        std::erase_if(found, [&](const Occurrence& one) {
            return one.item != series.master || !one.identity || instantOf(*one.identity) < from;
        });
        return budget.isSpent() ? std::vector<Occurrence>() : found;
    }

    std::optional<Occurrence> nextOf(const std::vector<Occurrence>& occurrences) const {
        const SystemSeconds completed = instantOf(*m_text.occurrence().identity);
        for (const Occurrence& one : occurrences) {
            if (instantOf(*one.identity) > completed) {
                return one;
            }
        }
        return std::nullopt;
    }

    /// Whether an undone occurrence before this one would be lost.
    bool isEarlierLeft(const std::vector<Occurrence>& occurrences) const {
        const Occurrence& completed = m_text.occurrence();
        const CalendarZone& zone = m_text.systemZone();
        const SystemSeconds today =
            zone.instantOf(cctz::civil_second(cctz::civil_day(zone.localOf(m_context.now))));
        const bool isOverdue = completed.anchor() && instantOf(*completed.anchor()) < today;
        return !isOverdue &&
               instantOf(*occurrences.front().identity) < instantOf(*completed.identity);
    }

    bool move(ContentComponent& component, const CalendarItem& master, const Occurrence& next) {
        return moveTime(component, "DTSTART", master.start, next.start) &&
               moveTime(component, "DUE", master.end, next.end) &&
               lowerCount(component, master, next);
    }

    bool moveTime(ContentComponent& component, const char* name,
                  const std::optional<CalendarTime>& time,
                  const std::optional<CalendarTime>& moved) const {
        const ContentLine* model = component.property(name);
        if (!time || model == nullptr) {
            return !time;
        }
        const auto line = moved ? timeLine(name, *moved, *model, *time) : std::nullopt;
        if (line) {
            component.setProperty(name, *line, m_text.lineEnding());
        }
        return line.has_value();
    }

    bool lowerCount(ContentComponent& component, const CalendarItem& master,
                    const Occurrence& next) const {
        const auto rule = RecurrenceRule::fromText(master.recurrence.rules.front());
        const ContentLine* line = component.property("RRULE");
        if (!rule || line == nullptr) {
            return false;
        }
        if (rule->parts().count <= 0) {
            return true;
        }
        const CalendarTime& first = *firstOf(master);
        ExpansionBudget budget = budgetOfSearch;
        const auto passed = rule->localTimes(first, {first.local, next.identity->local},
                                             m_text.systemZone(), budget);
        const auto left = rule->parts().count - static_cast<std::int64_t>(passed.size());
        if (budget.isSpent() || left < 1) {
            return false;
        }
        component.setProperty("RRULE",
                              "RRULE" + line->parameters() + ":" + withCount(line->value(), left),
                              m_text.lineEnding());
        return true;
    }

    bool keepsWhatFollows(const ContentComponent& moved, const Occurrence& next) {
        const auto item = m_text.itemOf(moved);
        if (!item) {
            return false;
        }
        const SystemSeconds from = instantOf(*next.identity);
        const Series after{&*item, m_text.series().overrides};
        return placesFrom(m_text.series(), from) == placesFrom(after, from);
    }

    std::vector<Place> placesFrom(const Series& series, SystemSeconds from) const {
        std::vector<Place> places;
        for (const Occurrence& one : occurrencesFrom(series, from)) {
            if (places.size() < mostCompared) {
                places.push_back({instantOf(*one.identity), instant(one.start), instant(one.end)});
            }
        }
        return places;
    }

    std::optional<SystemSeconds> instant(const std::optional<CalendarTime>& time) const {
        return time ? std::optional(instantOf(*time)) : std::nullopt;
    }

    SeriesText& m_text;
    const EditContext& m_context;
};

} // namespace

EditResult completeToDo(std::string_view text, const OccurrenceTarget& target,
                        Completion completion, const EditContext& context) {
    if (target.kind != ItemKind::ToDo) {
        return EditResult::failed("only a to-do can be completed");
    }
    SeriesText series(text, target, context);
    if (!series.error().empty()) {
        return EditResult::failed(series.error());
    }
    ContentComponent* own = series.isShared() ? series.addOverride() : &series.describing();
    if (own == nullptr) {
        return EditResult::failed("the occurrence cannot be changed without the others");
    }
    setState(*own, completion, context.now, series.lineEnding());
    if (completion == Completion::Done && series.isShared()) {
        SeriesAdvance(series, context).advance();
    }
    return {series.text(), {}};
}

} // namespace plenzo
