#pragma once

#include "dates/calendar_date.h"
#include "dates/relative_date_formatter.h"
#include "model/alarm.h"
#include "platform/clock.h"
#include "platform/localized_strings.h"
#include "platform/regional_settings.h"

#include <optional>
#include <string>

namespace plenzo {

/// Says in the user's words when the occurrence of an alarm takes place.
class AlarmDateText {
public:
    struct Collaborators {
        const Clock& clock;
        const RegionalSettings& regionalSettings;
        const LocalizedStrings& strings;
    };

    struct Text {
        /// Such as "Tomorrow at 9:30 AM".
        std::string text;
        /// Nothing when the record has no date.
        std::optional<CalendarDate> eventStartDate;
    };

    explicit AlarmDateText(Collaborators collaborators) : m_collaborators(collaborators) {}

    /// The day that "Today" means.
    enum class SeenFrom { FireDate, Now };

    /// The start of the occurrence, without the time when it takes all day; the alarm's own date
    /// when the occurrence has none.
    [[nodiscard]] Text dateStringForAlarm(const Alarm& alarm, SeenFrom seenFrom) const;

private:
    [[nodiscard]] RelativeDateFormatter& formatter() const;

    Collaborators m_collaborators;
    /// Kept from alarm to alarm: making one takes twenty times as long as using it.
    mutable std::optional<RelativeDateFormatter> m_formatter;
    mutable std::string m_locale;
};

} // namespace plenzo
