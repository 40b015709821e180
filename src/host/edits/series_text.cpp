#include "host/edits/series_text.h"

#include "host/edits/time_lines.h"
#include "host/ical/component_reader.h"
#include "host/ical/content_blocks.h"
#include "host/occurrences/item_length.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::int64_t daySeconds = 86400;
constexpr ExpansionBudget budgetOfSearch{400'000, 10'000};

bool isSame(const std::optional<CalendarTime>& left, const std::optional<CalendarTime>& right) {
    if (!left || !right) {
        return !left && !right;
    }
    return left->form == right->form &&
           left->zone.instantOf(left->local) == right->zone.instantOf(right->local);
}

/// The UID where nothing in it asks for more than a look; nothing where only a parser can tell.
std::optional<std::string> plainUidOf(const ContentComponent& component) {
    const ContentLine* line = component.property("UID");
    const bool isBare = line != nullptr && line->parameters().empty();
    std::string uid = isBare ? line->value() : std::string();
    const bool isPlain = !uid.empty() && std::all_of(uid.begin(), uid.end(), [](char character) {
        return character >= ' ' && character <= '~' && character != '\\';
    });
    return isPlain ? std::optional(std::move(uid)) : std::nullopt;
}

void removeFixedAlarms(ContentComponent& component, const CalendarItem& item) {
    const auto alarms = component.components("VALARM");
    for (const AlarmDefinition& alarm : item.alarms) {
        const auto place = static_cast<std::size_t>(alarm.place);
        if (alarm.absoluteTrigger && place < alarms.size()) {
            component.remove(*alarms[place]);
        }
    }
}

} // namespace

SeriesText::SeriesText(std::string_view text, const OccurrenceTarget& target,
                       const EditContext& context)
    : m_now(context.now), m_systemZone(context.systemZone),
      m_content(context.toleratesDamage ? ContentText::fromDamagedText(text)
                                        : ContentText::fromText(text, m_error)),
      m_zones(contentBlocksOf(text).components) {
    if (!m_content) {
        return;
    }
    readItems(target);
    if (m_items.empty()) {
        m_error = "the item is not there any more";
        return;
    }
    m_series = seriesOf(m_items).front();
    findOccurrence(target);
}

void SeriesText::readItems(const OccurrenceTarget& target) {
    for (ContentComponent* calendar : m_content->components()) {
        addIfMeant(*calendar, nullptr, target); // some files hold items without a calendar
        for (ContentComponent* component : calendar->components()) {
            addIfMeant(*component, calendar, target);
        }
    }
}

// What the reader takes for the UID counts; parsing is for what may be it.
void SeriesText::addIfMeant(ContentComponent& component, ContentComponent* parent,
                            const OccurrenceTarget& target) {
    const auto plainUid = plainUidOf(component);
    const bool isOfKind = component.name() == (target.kind == ItemKind::ToDo ? "VTODO" : "VEVENT");
    auto item = isOfKind && plainUid.value_or(target.itemUid) == target.itemUid ? itemOf(component)
                                                                                : std::nullopt;
    const bool isMeant = item && item->uid == target.itemUid &&
                         (!item->uid.empty() || component.firstLine() == target.line);
    if (isMeant) {
        m_items.push_back(std::move(*item));
        m_components.push_back(&component);
        m_parents.push_back(parent);
    }
}

std::optional<CalendarItem> SeriesText::itemOf(const ContentComponent& component) {
    const std::string text = component.text();
    return readItem({component.name(), text, component.firstLine()}, m_zones).item;
}

void SeriesText::findOccurrence(const OccurrenceTarget& target) {
    const SystemSeconds around =
        target.identity ? instantOf(*target.identity, m_systemZone) : SystemSeconds();
    const ExpansionWindow window{around, around - cctz::seconds(2 * daySeconds),
                                 around + cctz::seconds(2 * daySeconds), m_systemZone};
    ExpansionBudget budget = budgetOfSearch;
    for (const Occurrence& occurrence : occurrencesOf(m_series, window, {}, budget)) {
        if (isSame(occurrence.identity, target.identity)) {
            m_occurrence = occurrence;
            return;
        }
    }
    m_error = "the occurrence is not there any more";
}

bool SeriesText::isShared() const {
    const CalendarItem& item = *m_occurrence->item;
    const bool isOverride = item.recurrenceId && &item != m_series.master;
    return m_occurrence->isRecurring && (!isOverride || item.appliesToFuture);
}

ContentComponent& SeriesText::componentOf(const CalendarItem& item) {
    return *m_components[static_cast<std::size_t>(&item - m_items.data())];
}

ContentComponent* SeriesText::addOverride() {
    const CalendarItem& item = *m_occurrence->item;
    const bool isFirstOfFuture =
        &item != m_series.master && isSame(item.recurrenceId, m_occurrence->identity);
    const CalendarItem* master = m_series.master;
    if (master == nullptr || item.uid.empty() || !m_occurrence->identity) {
        return nullptr;
    }
    ContentComponent& masterComponent = componentOf(*master);
    const ContentLine* model = masterComponent.property(master->start ? "DTSTART" : "DUE");
    const auto& modelTime = master->start ? master->start : master->end;
    const auto line = model == nullptr
                          ? std::nullopt
                          : timeLine("RECURRENCE-ID", *m_occurrence->identity, *model, *modelTime);
    if (!line) {
        return nullptr;
    }
    auto copy = describing().copy();
    for (const char* name : {"RRULE", "RDATE", "EXDATE", "EXRULE"}) {
        copy->removeProperties(name);
    }
    copy->setProperty("RECURRENCE-ID", *line, lineEnding());
    moveTimes(*copy, *m_occurrence);
    removeFixedAlarms(*copy, item);
    if (isFirstOfFuture && !moveFutureOn()) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(&item - m_items.data());
    return m_parents[index] == nullptr
               ? &m_content->insertAfter(*m_components[index], std::move(copy))
               : &m_parents[index]->insertAfter(*m_components[index], std::move(copy));
}

std::optional<Occurrence> SeriesText::nextOfSameItem() const {
    constexpr cctz::seconds fourYears(4LL * 366 * daySeconds);
    const SystemSeconds own = instantOf(*m_occurrence->identity, m_systemZone);
    const ExpansionWindow window{own, own - cctz::seconds(daySeconds), own + fourYears,
                                 m_systemZone};
    ExpansionBudget budget = budgetOfSearch;
    std::optional<Occurrence> next;
    SystemSeconds atNext = SystemSeconds::max();
    for (const Occurrence& other : occurrencesOf(m_series, window, {}, budget)) {
        const bool isLater = other.item == m_occurrence->item && other.identity &&
                             instantOf(*other.identity, m_systemZone) > own;
        if (isLater && instantOf(*other.identity, m_systemZone) < atNext) {
            next = other;
            atNext = instantOf(*other.identity, m_systemZone);
        }
    }
    return next;
}

/// Lets the override that applies to the future begin with the next occurrence.
bool SeriesText::moveFutureOn() {
    ContentComponent& future = describing();
    const CalendarItem& item = *m_occurrence->item;
    const auto next = nextOfSameItem();
    const ContentLine* model = future.property("RECURRENCE-ID");
    const auto line = !next || model == nullptr
                          ? std::nullopt
                          : timeLine("RECURRENCE-ID", *next->identity, *model, *item.recurrenceId);
    if (line) {
        future.setProperty("RECURRENCE-ID", *line, lineEnding());
        moveTimes(future, *next);
        markChanged(future, m_now, lineEnding());
    }
    return line.has_value();
}

void SeriesText::moveTimes(ContentComponent& component, const Occurrence& occurrence) const {
    const CalendarItem& item = *occurrence.item;
    const ContentLine* start = component.property("DTSTART");
    if (start != nullptr && item.start && occurrence.start) {
        if (const auto line = timeLine("DTSTART", *occurrence.start, *start, *item.start)) {
            component.setProperty("DTSTART", *line, lineEnding());
        }
    }
    if (occurrence.end) {
        moveEnd(component, occurrence);
    }
}

// A length keeps; one that a period of RDATE gives is written as an end.
void SeriesText::moveEnd(ContentComponent& component, const Occurrence& occurrence) const {
    const CalendarItem& item = *occurrence.item;
    const char* name = item.kind == ItemKind::ToDo ? "DUE" : "DTEND";
    const ContentLine* end = component.property(name);
    if (end != nullptr && item.end) {
        if (const auto line = timeLine(name, *occurrence.end, *end, *item.end)) {
            component.setProperty(name, *line, lineEnding());
        }
        return;
    }
    const ContentLine* start = component.property("DTSTART");
    if (start == nullptr || !occurrence.start ||
        isSame(endOf(item, *occurrence.start, m_systemZone), occurrence.end)) {
        return;
    }
    if (const auto line = timeLine(name, *occurrence.end, *start, *item.start)) {
        component.removeProperties("DURATION");
        component.setProperty(name, *line, lineEnding());
    }
}

} // namespace plenzo
