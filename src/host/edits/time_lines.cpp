#include "host/edits/time_lines.h"

#include <array>
#include <cstdio>

namespace plenzo {

namespace {

std::string timeText(const CalendarTime& time, bool isUniversal) {
    const cctz::civil_second& local = time.local;
    std::array<char, 32> text{};
    if (time.form == TimeForm::Date) {
        std::snprintf(text.data(), text.size(), "%04d%02d%02d", static_cast<int>(local.year()),
                      local.month(), local.day());
    } else {
        std::snprintf(text.data(), text.size(), "%04d%02d%02dT%02d%02d%02d%s",
                      static_cast<int>(local.year()), local.month(), local.day(), local.hour(),
                      local.minute(), local.second(), isUniversal ? "Z" : "");
    }
    return text.data();
}

/// The wall clock of `time` as `model` would write it.
CalendarTime inFormOf(const CalendarTime& time, const CalendarTime& model) {
    const bool areZoned = time.form == TimeForm::Zoned && model.form == TimeForm::Zoned;
    return movedTo(model,
                   areZoned ? model.zone.localOf(time.zone.instantOf(time.local)) : time.local);
}

} // namespace

std::optional<std::string> timeLine(std::string_view name, const CalendarTime& time,
                                    const ContentLine& model, const CalendarTime& modelTime) {
    if ((time.form == TimeForm::Date) != (modelTime.form == TimeForm::Date)) {
        return std::nullopt;
    }
    const std::string value = model.value();
    const bool isUniversal = value.ends_with('Z') || value.ends_with('z');
    return std::string(name) + model.parameters() + ":" +
           timeText(inFormOf(time, modelTime), isUniversal);
}

std::string universalTimeText(SystemSeconds instant) {
    return timeText({TimeForm::Zoned, CalendarZone().localOf(instant), {}}, true);
}

void markChanged(ContentComponent& component, SystemSeconds now, std::string_view lineEnding) {
    component.setProperty("DTSTAMP", "DTSTAMP:" + universalTimeText(now), lineEnding);
    component.setProperty("LAST-MODIFIED", "LAST-MODIFIED:" + universalTimeText(now), lineEnding);
}

} // namespace plenzo
