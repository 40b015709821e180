#include "core/host_pushes.h"

#include <utility>

namespace plenzo {

namespace {

constexpr double secondsAfterWaking = 1.0;

} // namespace

void HostPushes::push(Array eventDicts, bool delta) {
    if (m_asleep || m_retry) {
        m_waiting.push_back({std::move(eventDicts), delta});
    } else {
        m_process(std::move(eventDicts), delta);
    }
}

void HostPushes::goingToSleep() {
    m_asleep = true;
    m_retry.reset();
}

void HostPushes::awakeFromSleep() {
    m_asleep = false;
    m_retry = m_timers.schedule(m_clock.now() + secondsAfterWaking, [this] { processWaiting(); });
}

void HostPushes::processWaiting() {
    m_retry.reset();
    for (Push& push : std::exchange(m_waiting, {})) {
        m_process(std::move(push.eventDicts), push.delta);
    }
}

} // namespace plenzo
