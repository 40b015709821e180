#include "core/simulation/oracle.h"

#include <algorithm>
#include <utility>

namespace plenzo::simulation {

void Oracle::learnAll(const std::vector<Record>& records) {
    m_records.clear();
    for (const Record& record : records) {
        learn(record);
    }
}

void Oracle::learn(const Record& record) {
    Known& known = m_records.emplace_back(Known{record, m_now, {}});
    computeDueDates(known);
}

void Oracle::forget(const std::string& uid) {
    std::erase_if(m_records, [&uid](const Known& known) { return known.record.uid == uid; });
}

Firings Oracle::wake() {
    m_awake = true;
    return takeDue(Lateness::UntilNow);
}

Firings Oracle::advanceTo(Instant now) {
    m_now = now;
    return takeDue(Lateness::None);
}

Firings Oracle::setClock(Instant now) {
    if (m_now > m_setBackFrom) {
        m_setBackFrom = now < m_now ? m_now : m_setBackFrom;
    }
    m_now = now;
    return takeDue(Lateness::UntilNow);
}

Firings Oracle::changeZone(const TimeZone& zone) {
    m_zone = zone;
    for (Known& known : m_records) {
        known.since = m_now;
        computeDueDates(known);
    }
    return takeDue(Lateness::UntilNow);
}

void Oracle::computeDueDates(Known& known) const {
    known.dueDates.clear();
    for (const Reminder& reminder : known.record.reminders) {
        known.dueDates.push_back(dueDate(known.record, reminder, m_zone));
    }
}

void Oracle::takeDue(const Known& known, Lateness lateness, Firings& firings) {
    for (std::size_t number = 0; number < known.dueDates.size(); ++number) {
        const auto& due = known.dueDates[number];
        if (!due || *due > m_now || *due < known.since) {
            continue;
        }
        const Reminder& reminder = known.record.reminders[number];
        const Firing firing{.at = lateness == Lateness::None ? *due : m_now,
                            .recordUID = known.record.uid,
                            .reminderUID = reminder.uid,
                            .due = *due,
                            .isAbsolute = reminder.absolute.has_value()};
        if (m_fired.insert(identity(firing)).second) {
            firings.push_back(firing);
        }
    }
}

Firings Oracle::takeDue(Lateness lateness) {
    Firings firings;
    if (m_awake) {
        for (const Known& known : m_records) {
            takeDue(known, lateness, firings);
        }
    }
    return withoutRepetitions(std::move(firings));
}

/// A reminder at an absolute moment, which several occurrences share, comes once.
Firings Oracle::withoutRepetitions(Firings firings) {
    std::set<std::pair<std::string, double>> seen;
    std::erase_if(firings, [&seen](const Firing& firing) {
        return firing.isAbsolute &&
               !seen.insert({firing.reminderUID, firing.at.secondsSinceReferenceDate()}).second;
    });
    return firings;
}

bool Oracle::mayFire(const Firing& firing) const {
    const auto isIt = [&firing](const Known& known) {
        for (std::size_t number = 0; number < known.dueDates.size(); ++number) {
            if (known.record.uid == firing.recordUID && known.dueDates[number] == firing.due &&
                known.record.reminders[number].uid == firing.reminderUID) {
                return true;
            }
        }
        return false;
    };
    return firing.due <= m_setBackFrom && !m_fired.contains(identity(firing)) &&
           std::ranges::any_of(m_records, isIt);
}

} // namespace plenzo::simulation
