#pragma once

#include "platform/delays.h"
#include "support/fake_timers.h"

namespace plenzo {

/// Running time that a test lets pass.
class FakeDelays final : public Delays {
public:
    [[nodiscard]] Handle after(int milliseconds, std::function<void()> elapsed) override {
        return m_timers.schedule(m_clock.now() + milliseconds / 1000.0, std::move(elapsed));
    }

    void pass(double seconds) { m_timers.advanceTo(m_clock.now() + seconds); }

private:
    FakeClock m_clock{Instant(0)};
    FakeTimers m_timers{m_clock};
};

} // namespace plenzo
