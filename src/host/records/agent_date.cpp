#include "host/records/agent_date.h"

namespace plenzo {

namespace {

constexpr std::int64_t referenceUnixSeconds = 978'307'200; // 2001-01-01 00:00:00 UTC
constexpr std::int64_t noonSeconds = 43'200;

} // namespace

Date agentDate(SystemSeconds instant) {
    return {static_cast<double>(unixSecondsOf(instant) - referenceUnixSeconds)};
}

SystemSeconds instantFromAgentSeconds(std::int64_t seconds) {
    return instantFromUnixSeconds(referenceUnixSeconds + seconds);
}

Date agentDate(const CalendarTime& time) {
    switch (time.form) {
    case TimeForm::Date:
        return agentDate(CalendarZone().instantOf(time.local + noonSeconds));
    case TimeForm::Floating:
        return agentDate(CalendarZone().instantOf(time.local));
    case TimeForm::Zoned:
        break;
    }
    return agentDate(time.zone.instantOf(time.local));
}

} // namespace plenzo
