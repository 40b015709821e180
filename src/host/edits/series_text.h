#pragma once

#include "host/edits/content_lines.h"
#include "host/edits/edit_targets.h"
#include "host/ical/zone_table.h"
#include "host/occurrences/occurrence_expansion.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// The components of one item in a calendar text, both as lines that can be edited and as what they
/// mean. The text outlives it.
class SeriesText {
public:
    SeriesText(std::string_view text, const OccurrenceTarget& target, const EditContext& context);
    SeriesText(const SeriesText&) = delete;
    SeriesText& operator=(const SeriesText&) = delete;

    /// Why nothing can be edited; empty when the occurrence was found.
    const std::string& error() const { return m_error; }

    const Occurrence& occurrence() const { return *m_occurrence; }
    const CalendarZone& systemZone() const { return m_systemZone; }
    const std::string& lineEnding() const { return m_content->lineEnding(); }
    const Series& series() const { return m_series; }

    /// Whether the component that describes the occurrence describes others too.
    bool isShared() const;

    /// The component that describes the occurrence, and perhaps others.
    ContentComponent& describing() { return componentOf(*m_occurrence->item); }
    ContentComponent& componentOf(const CalendarItem& item);

    /// A component of this occurrence alone, put behind the one that describes it: its copy, with a
    /// RECURRENCE-ID in the form of the series' DTSTART and the times of the occurrence, without
    /// what makes it recur. Alarms at fixed times stay with the series: in a copy they would go off
    /// twice. Null when there can be none. Where the describing component is an override that
    /// begins with this occurrence and applies to the future, that begins with the next one then.
    ContentComponent* addOverride();

    /// What a component says, by the zones of the text.
    std::optional<CalendarItem> itemOf(const ContentComponent& component);

    std::string text() const { return m_content->text(); }

private:
    void readItems(const OccurrenceTarget& target);
    void addIfMeant(ContentComponent& component, ContentComponent* parent,
                    const OccurrenceTarget& target);
    void findOccurrence(const OccurrenceTarget& target);
    std::optional<Occurrence> nextOfSameItem() const;
    bool moveFutureOn();
    void moveTimes(ContentComponent& component, const Occurrence& occurrence) const;
    void moveEnd(ContentComponent& component, const Occurrence& occurrence) const;

    std::string m_error;
    SystemSeconds m_now;
    CalendarZone m_systemZone;
    std::optional<ContentText> m_content;
    ZoneTable m_zones;
    std::vector<CalendarItem> m_items;
    std::vector<ContentComponent*> m_components; // those of the items
    std::vector<ContentComponent*> m_parents;    // theirs; null for an item outside of any
    Series m_series;
    std::optional<Occurrence> m_occurrence;
};

} // namespace plenzo
