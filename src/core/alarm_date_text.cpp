#include "core/alarm_date_text.h"

#include "model/alarm_computation.h"

namespace plenzo {

RelativeDateFormatter& AlarmDateText::formatter() const {
    const std::string locale = m_collaborators.regionalSettings.locale();
    if (!m_formatter || m_locale != locale) {
        m_locale = locale;
        m_formatter.emplace(
            locale, m_collaborators.regionalSettings.timeZone(),
            [&strings = m_collaborators.strings](std::string_view key) {
                return strings.string(key);
            },
            [&clock = m_collaborators.clock] { return clock.now(); });
        m_formatter->setUseRelativeDates(true);
        m_formatter->setDateStyle(FormatStyle::Short);
    }
    m_formatter->setTimeZone(m_collaborators.regionalSettings.timeZone());
    return *m_formatter;
}

AlarmDateText::Text AlarmDateText::dateStringForAlarm(const Alarm& alarm, SeenFrom seenFrom) const {
    const AlarmContext context{.now = m_collaborators.clock.now(),
                               .systemZone = m_collaborators.regionalSettings.timeZone()};
    const bool allDay = alarm.eventDict->boolForKey(keys::allDay);
    const Instant fireDate = alarm.fireDate ? alarm.fireDate->instant() : context.now;
    RelativeDateFormatter& dateFormatter = formatter();
    dateFormatter.setBaseDate(seenFrom == SeenFrom::FireDate ? fireDate : context.now);
    dateFormatter.setTimeStyle(allDay ? FormatStyle::None : FormatStyle::Short);
    const auto start = eventDateInLocalTime(*alarm.eventDict, CarryForward::No, context);
    return {.text = dateFormatter.stringFromDate(start ? start->instant() : fireDate),
            .eventStartDate = start};
}

} // namespace plenzo
