#pragma once

#include "core/simulation/simulated_record.h"

#include <compare>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace plenzo::simulation {

/// One alarm that reached the user, or has to.
struct Firing {
    Instant at;
    std::string recordUID;
    std::string reminderUID;
    Instant due;
    /// Several records may share it then, and it is shown for any one of them.
    bool isAbsolute = false;

    friend bool operator==(const Firing& left, const Firing& right) {
        return left.at == right.at && left.reminderUID == right.reminderUID &&
               left.due == right.due && left.isAbsolute == right.isAbsolute &&
               (left.isAbsolute || left.recordUID == right.recordUID);
    }
};
using Firings = std::vector<Firing>;

/// Knows what has to reach the user, and when: every reminder of what the host last said, once, at
/// the moment the clock shows its date or, if nobody is awake then, at the next moment when
/// somebody is. It goes through all reminders every time and keeps no queue.
class Oracle {
public:
    Oracle(Instant now, const TimeZone& zone) : m_now(now), m_zone(zone) {}

    /// What the host says counts from now on: what was due before is past.
    void learnAll(const std::vector<Record>& records);
    void learn(const Record& record);
    void forget(const std::string& uid);
    void forgetAll() { m_records.clear(); }

    /// Nobody is there to tell until wake().
    void sleep() { m_awake = false; }
    [[nodiscard]] Firings wake();
    /// Time passes.
    [[nodiscard]] Firings advanceTo(Instant now);
    /// Without time passing.
    [[nodiscard]] Firings setClock(Instant now);
    /// Floating times are due at other moments then; those that are past already are not caught up.
    [[nodiscard]] Firings changeZone(const TimeZone& zone);

    /// Whether this may reach the user too, though it does not have to: the clock shows again what
    /// was past when the host said it.
    [[nodiscard]] bool mayFire(const Firing& firing) const;
    void noteFiring(const Firing& firing) { m_fired.insert(identity(firing)); }
    /// Whether the clock shows what it has shown before.
    [[nodiscard]] bool isInRepeatedTime() const { return m_now <= m_setBackFrom; }

private:
    struct Known {
        Record record;
        Instant since;
        /// Of each reminder, in the zone of the moment.
        std::vector<std::optional<Instant>> dueDates;
    };
    /// Record, reminder, seconds.
    using Identity = std::tuple<std::string, std::string, double>;
    enum class Lateness { None, UntilNow };

    [[nodiscard]] static Identity identity(const Firing& firing) {
        return {firing.recordUID, firing.reminderUID, firing.due.secondsSinceReferenceDate()};
    }
    void computeDueDates(Known& known) const;
    void takeDue(const Known& known, Lateness lateness, Firings& firings);
    [[nodiscard]] Firings takeDue(Lateness lateness);
    [[nodiscard]] static Firings withoutRepetitions(Firings firings);

    Instant m_now;
    TimeZone m_zone;
    bool m_awake = true;
    Instant m_setBackFrom{-1e12};
    /// Several may have one "uid" when the host does not pair its messages.
    std::vector<Known> m_records;
    std::set<Identity> m_fired;
};

} // namespace plenzo::simulation
