#pragma once

#include "host/ical/calendar.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// Since some beginning, of a clock that nobody sets.
using SteadyTime = std::chrono::milliseconds;
using SteadyClock = std::function<SteadyTime()>;

SteadyTime steadyTime();

/// Bears with files that are away, or damaged, while another program writes them anew: for a second
/// a file that is gone counts as it was, and for half a minute one that is empty, cut short,
/// unreadable or no calendar any more. Their alarms would be taken back otherwise, for good.
class FileGrace {
public:
    /// Not at first: who looks only once does not wait for anything.
    void setGranted(bool isGranted) { m_isGranted = isGranted; }
    [[nodiscard]] bool isGranted() const { return m_isGranted; }

    /// What counts of the file at the path: what was `found` there, null for nothing, or for a
    /// while what is `known` of it. Each may be null.
    CalendarFilePointer counting(const std::string& path, const CalendarFilePointer& known,
                                 const CalendarFilePointer& found, SteadyTime now);

    [[nodiscard]] bool isEmpty() const { return m_absences.empty(); }

    /// When the next file ceases to count unless it has come back.
    [[nodiscard]] std::optional<SteadyTime> nextEnd() const;
    /// The paths of those that have done so, to be looked at once more; forgotten after that.
    [[nodiscard]] std::set<std::string> ended(SteadyTime now) const;
    void forgetEnded(SteadyTime now);

    /// The files that are gone and whose items are all among those with these UIDs cease to count:
    /// they have moved.
    void endForMoved(const std::set<std::string_view>& uids);

private:
    enum class Fault { Gone, Damaged };

    struct Absence {
        CalendarFilePointer known;
        Fault fault = Fault::Gone;
        SteadyTime latestEnd{};
        SteadyTime end{};
    };

    static Fault faultAt(const std::string& path);
    Absence& absenceOf(const std::string& path, SteadyTime now);

    bool m_isGranted = false;
    std::map<std::string, Absence> m_absences; // by the files' paths
};

} // namespace plenzo
