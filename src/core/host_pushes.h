#pragma once

#include "platform/clock.h"
#include "platform/timers.h"
#include "propertylist/array.h"

#include <functional>
#include <vector>

namespace plenzo {

/// The batches that the host pushes. They are handed on in the order in which they came: at once,
/// or, while the machine sleeps, together a second after it woke.
class HostPushes {
public:
    using Processing = std::function<void(Array eventDicts, bool delta)>;

    HostPushes(Timers& timers, const Clock& clock, Processing process)
        : m_timers(timers), m_clock(clock), m_process(std::move(process)) {}

    void push(Array eventDicts, bool delta);

    void goingToSleep();
    void awakeFromSleep();

private:
    struct Push {
        Array eventDicts;
        bool delta;
    };

    void processWaiting();

    Timers& m_timers;
    const Clock& m_clock;
    Processing m_process;
    bool m_asleep = false;
    std::vector<Push> m_waiting;
    Handle m_retry;
};

} // namespace plenzo
