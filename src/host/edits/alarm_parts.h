#pragma once

#include "host/edits/content_lines.h"
#include "host/ical/calendar_zone.h"

#include <functional>
#include <string>
#include <string_view>

namespace plenzo {

/// The VALARM parts of one component, by how they belong together (RFC 9074, 7). The component
/// outlives it.
class AlarmParts {
public:
    AlarmParts(ContentComponent& parent, std::string_view lineEnding)
        : m_parent(parent), m_lineEnding(lineEnding) {}

    /// The alarm at that place among the alarms, or null.
    ContentComponent* at(int place) const;

    /// The alarm that this one is the snooze of, or null.
    ContentComponent* originalOf(const ContentComponent& snooze) const;

    void setAcknowledged(ContentComponent& alarm, SystemSeconds moment) const;
    void setTrigger(ContentComponent& alarm, SystemSeconds moment) const;

    /// Puts a copy of the alarm beside it that goes off at `until`, in place of an earlier one. An
    /// alarm without a UID gets one.
    void addSnooze(ContentComponent& original, SystemSeconds until,
                   const std::function<std::string()>& newUid);
    void removeSnoozesOf(const ContentComponent& original);

private:
    ContentComponent& m_parent;
    std::string m_lineEnding;
};

/// The UID of the alarm that this one is the snooze of; empty when it is none.
std::string originalUidOf(const ContentComponent& alarm);

/// Whether the alarm's TRIGGER says that it is a date-time.
bool isAtFixedTime(const ContentComponent& alarm);

} // namespace plenzo
