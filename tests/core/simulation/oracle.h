#pragma once

#include "core/simulation/simulated_record.h"

#include <compare>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace plenzo::simulation {

/// One alarm that reached the user, or has to.
struct Firing {
    double atSeconds;
    std::string recordUID;
    std::string reminderUID;
    double dueSeconds;

    friend auto operator<=>(const Firing&, const Firing&) = default;
};
using Firings = std::set<Firing>;

/// Knows what has to reach the user, and when: every reminder of what the host last said, once, at
/// the moment the clock shows its date or, if nobody is awake then, at the next moment when
/// somebody is. It goes through all reminders every time and keeps no queue.
class Oracle {
public:
    Oracle(Instant now, TimeZone zone) : m_now(now), m_zone(zone) {}

    /// What the host says counts from now on: what was due before is past.
    void learnAll(const std::vector<Record>& records);
    void forget(const std::string& uid);
    void learn(const Record& record);
    void forgetAll() { m_records.clear(); }

    /// Nobody is there to be told until wake().
    void sleep() { m_awake = false; }
    [[nodiscard]] Firings wake();
    /// Time passes, or the clock is set forward.
    [[nodiscard]] Firings advanceTo(Instant now, bool isStep = false);
    /// What was due between the two moments may be due again, if it did not reach the user then.
    void setClockBack(Instant now);
    [[nodiscard]] Firings changeZone(const TimeZone& zone);

    /// Whether this may reach the user too, though it does not have to: the clock was set back to
    /// before it was due, after the host had said it.
    [[nodiscard]] bool mayFire(const Firing& firing) const;
    void noteFiring(const Firing& firing) { markFired(firing); }

private:
    struct Known {
        Record record;
        Instant since;
    };
    using Identity = std::tuple<std::string, std::string, double>;

    void markFired(const Firing& firing);
    [[nodiscard]] Firings dueBetween(Instant from, Instant until, bool isStep);
    void addDue(const Known& known, Instant from, Instant until, bool isStep, Firings& due) const;
    [[nodiscard]] Firings withoutRepetitions(const Firings& due) const;

    Instant m_now;
    TimeZone m_zone;
    bool m_awake = true;
    /// Several may have one "uid" when the host does not pair its messages.
    std::vector<Known> m_records;
    std::set<Identity> m_fired;
};

} // namespace plenzo::simulation
