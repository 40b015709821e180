#include "host/edits/alarm_parts.h"
#include "host/edits/calendar_edits.h"
#include "host/edits/series_text.h"
#include "host/edits/time_lines.h"
#include "host/records/alarm_entries.h"

#include <algorithm>
#include <cstdint>

namespace plenzo {

namespace {

constexpr cctz::seconds oneSecond(1);
constexpr cctz::seconds oneDay(86400);
constexpr ExpansionBudget budgetOfSearch{400'000, 10'000};
constexpr const char* cannotStandAlone = "the occurrence cannot be changed without the others";

bool isWritableTime(SystemSeconds instant) {
    const auto year = CalendarZone().localOf(instant).year();
    return year >= 1 && year <= 9999;
}

/// The alarm that a target names, in its text.
class AlarmInText {
public:
    AlarmInText(std::string_view text, const AlarmTarget& target, const EditContext& context)
        : m_series(text, target.occurrence, context), m_context(context),
          m_error(m_series.error()) {
        if (m_error.empty()) {
            findMoment(target);
        }
    }

    const std::string& error() const { return m_error; }

    EditResult acknowledge() {
        if (isSnooze()) {
            return dismissSnooze();
        }
        if (!isOfMany()) {
            return acknowledgeIn(m_series.describing(), soonest());
        }
        if (const auto moment = momentForAll()) {
            return acknowledgeIn(m_series.describing(), *moment);
        }
        ContentComponent* own = addOverride();
        return own == nullptr ? EditResult::failed(cannotStandAlone)
                              : acknowledgeIn(*own, soonest());
    }

    EditResult snooze(SystemSeconds until) {
        if (!isWritableTime(until)) {
            return EditResult::failed("the time to snooze until is none");
        }
        ContentComponent* own = isOfMany() ? addOverride() : &m_series.describing();
        if (own == nullptr) {
            return EditResult::failed(cannotStandAlone);
        }
        AlarmParts parts(*own, m_series.lineEnding());
        ContentComponent* alarm = ownAlarmIn(*own);
        ContentComponent* original = parts.originalOf(*alarm);
        if (!originalUidOf(*alarm).empty() && original == nullptr) {
            parts.setTrigger(*alarm, until);
            alarm->removeProperties("ACKNOWLEDGED");
            return finished(*own);
        }
        original = original == nullptr ? alarm : original;
        parts.setAcknowledged(*original, latest(soonest()));
        parts.addSnooze(*original, until, m_context.newUid);
        return finished(*own);
    }

private:
    void findMoment(const AlarmTarget& target) {
        for (const AlarmMoment& moment :
             alarmMomentsOf(m_series.occurrence(), m_series.systemZone())) {
            if (moment.definition->uid == target.alarmUid &&
                moment.repetition == target.repetition) {
                m_moment = moment;
            }
        }
        if (m_moment.definition == nullptr || alarmIn(m_series.describing()) == nullptr) {
            m_error = "the alarm is not there any more";
        } else if (!isWritableTime(soonest())) {
            m_error = "the alarm's time is none that can be written";
        }
    }

    ContentComponent* alarmIn(ContentComponent& parent) const {
        return AlarmParts(parent, m_series.lineEnding()).at(m_moment.definition->place);
    }

    /// In a new override the places are others than in what it was copied from.
    ContentComponent* ownAlarmIn(ContentComponent& parent) const {
        return m_ownAlarm == nullptr ? alarmIn(parent) : m_ownAlarm;
    }

    bool isSnooze() { return !originalUidOf(*alarmIn(m_series.describing())).empty(); }

    /// Whether other occurrences have this alarm as well; one at a fixed time is the same for all.
    bool isOfMany() const { return m_series.isShared() && !m_moment.definition->absoluteTrigger; }

    SystemSeconds soonest() const { return std::max(m_context.now, m_moment.at + oneSecond); }

    ContentComponent* addOverride() {
        ContentComponent* own = m_series.addOverride();
        if (own != nullptr) {
            m_ownAlarm = AlarmParts(*own, m_series.lineEnding()).at(placeWithoutFixed());
        }
        return m_ownAlarm == nullptr ? nullptr : own;
    }

    /// The alarm's place in an override, which has no alarms at fixed times.
    int placeWithoutFixed() const {
        int place = m_moment.definition->place;
        for (const AlarmDefinition& alarm : m_series.occurrence().item->alarms) {
            const bool isGone = alarm.absoluteTrigger.has_value();
            place -= isGone && alarm.place < m_moment.definition->place ? 1 : 0;
        }
        return place;
    }

    /// A time that the shared ACKNOWLEDGED can have without hiding another occurrence's alarm.
    std::optional<SystemSeconds> momentForAll() const {
        for (const SystemSeconds moment : {soonest(), m_moment.at + oneSecond}) {
            if (!hidesOthers(moment)) {
                return moment;
            }
        }
        return std::nullopt;
    }

    bool hidesOthers(SystemSeconds acknowledged) const {
        const SystemSeconds first = std::min(m_moment.at, m_context.now) - oneDay;
        const ExpansionWindow window{m_context.now, first, acknowledged + oneDay,
                                     m_series.systemZone()};
        ExpansionBudget budget = budgetOfSearch;
        const auto occurrences = occurrencesOf(
            m_series.series(), window, reachOfAlarms(m_series.occurrence().item->alarms), budget);
        return budget.isSpent() ||
               std::any_of(occurrences.begin(), occurrences.end(),
                           [&](const Occurrence& other) { return isHidden(other, acknowledged); });
    }

    bool isHidden(const Occurrence& other, SystemSeconds acknowledged) const {
        const Occurrence& own = m_series.occurrence();
        if (other.item != own.item || isAtSameTime(other, own)) {
            return false;
        }
        for (const AlarmMoment& moment : alarmMomentsOf(other, m_series.systemZone())) {
            const bool isReached = moment.definition == m_moment.definition &&
                                   moment.at <= acknowledged && !isAcknowledged(moment);
            if (isReached && (moment.at > m_moment.at || isStillWanted(other, moment))) {
                return true;
            }
        }
        return false;
    }

    bool isAtSameTime(const Occurrence& left, const Occurrence& right) const {
        return left.identity && right.identity &&
               instantOf(*left.identity, m_series.systemZone()) ==
                   instantOf(*right.identity, m_series.systemZone());
    }

    static bool isAcknowledged(const AlarmMoment& moment) {
        const auto& acknowledged = moment.definition->acknowledged;
        return acknowledged && *acknowledged >= moment.at;
    }

    bool isStillWanted(const Occurrence& other, const AlarmMoment& moment) const {
        const auto& end = other.end ? other.end : other.start;
        const bool isOver = end && instantOf(*end, m_series.systemZone()) <= m_context.now;
        return !isOver || moment.at > m_context.now - oneDay;
    }

    /// What was acknowledged once stays so.
    SystemSeconds latest(SystemSeconds moment) const {
        return std::max(moment, m_moment.definition->acknowledged.value_or(moment));
    }

    EditResult acknowledgeIn(ContentComponent& parent, SystemSeconds moment) {
        AlarmParts parts(parent, m_series.lineEnding());
        ContentComponent* alarm = ownAlarmIn(parent);
        parts.setAcknowledged(*alarm, latest(moment));
        if (m_ownAlarm != nullptr || !isOfMany()) {
            parts.removeSnoozesOf(*alarm);
        }
        return finished(parent);
    }

    EditResult dismissSnooze() {
        ContentComponent& parent = m_series.describing();
        AlarmParts parts(parent, m_series.lineEnding());
        ContentComponent* snooze = alarmIn(parent);
        ContentComponent* original = parts.originalOf(*snooze);
        if (original != nullptr && (!m_series.isShared() || isAtFixedTime(*original))) {
            parts.setAcknowledged(*original, std::max(soonest(), acknowledgedAs(parts, original)));
        }
        parent.remove(*snooze);
        return finished(parent);
    }

    /// An alarm that is put forward by its snooze is acknowledged beyond that already.
    SystemSeconds acknowledgedAs(AlarmParts& parts, const ContentComponent* component) const {
        for (const AlarmDefinition& alarm : m_series.occurrence().item->alarms) {
            if (parts.at(alarm.place) == component) {
                return alarm.acknowledged.value_or(SystemSeconds::min());
            }
        }
        return SystemSeconds::min();
    }

    EditResult finished(ContentComponent& changed) {
        markChanged(changed, m_context.now, m_series.lineEnding());
        return {m_series.text(), {}};
    }

    SeriesText m_series;
    const EditContext& m_context;
    std::string m_error;
    AlarmMoment m_moment;
    ContentComponent* m_ownAlarm = nullptr; // in a new override
};

} // namespace

EditResult acknowledgeAlarm(std::string_view text, const AlarmTarget& target,
                            const EditContext& context) {
    AlarmInText alarm(text, target, context);
    return alarm.error().empty() ? alarm.acknowledge() : EditResult::failed(alarm.error());
}

EditResult snoozeAlarm(std::string_view text, const AlarmTarget& target, SystemSeconds until,
                       const EditContext& context) {
    AlarmInText alarm(text, target, context);
    return alarm.error().empty() ? alarm.snooze(until) : EditResult::failed(alarm.error());
}

} // namespace plenzo
