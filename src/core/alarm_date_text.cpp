#include "core/alarm_date_text.h"

#include "dates/relative_date_formatter.h"
#include "model/alarm_computation.h"

namespace plenzo {

AlarmDateText::Text AlarmDateText::dateStringForAlarm(const Alarm& alarm) const {
    const auto& [clock, regionalSettings, strings] = m_collaborators;
    const AlarmContext context{.now = clock.now(), .systemZone = regionalSettings.timeZone()};
    const bool allDay = alarm.eventDict->boolForKey(keys::allDay);
    const Instant fireDate = alarm.fireDate ? alarm.fireDate->instant() : context.now;

    RelativeDateFormatter formatter(
        regionalSettings.locale(), context.systemZone,
        [&strings = strings](std::string_view key) { return strings.string(key); },
        [now = context.now] { return now; });
    formatter.setBaseDate(fireDate);
    formatter.setUseRelativeDates(true);
    formatter.setDateStyle(FormatStyle::Short);
    formatter.setTimeStyle(allDay ? FormatStyle::None : FormatStyle::Short);

    const auto start = eventDateInLocalTime(*alarm.eventDict, CarryForward::No, context);
    return {.text = formatter.stringFromDate(start ? start->instant() : fireDate),
            .eventStartDate = start};
}

} // namespace plenzo
