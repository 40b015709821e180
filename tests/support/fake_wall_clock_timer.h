#pragma once

#include "linux/wall_clock_timer.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <cstdint>
#include <utility>

namespace plenzo {

/// A system timer that comes due, and whose clock is set, when a test says so.
class FakeWallClockTimer final : public WallClockTimer {
public:
    [[nodiscard]] int descriptor() const override { return m_event.get(); }
    [[nodiscard]] ClockState arm(Instant date) override {
        armedDate = date;
        return std::exchange(stateToFindWhenArmed, ClockState::Runs);
    }
    [[nodiscard]] ClockState acknowledge() override {
        std::uint64_t count = 0;
        EXPECT_EQ(::read(m_event.get(), &count, sizeof count), ssize_t{sizeof count});
        return std::exchange(m_state, ClockState::Runs);
    }

    void becomeReadable(ClockState state) {
        const std::uint64_t one = 1;
        m_state = state;
        EXPECT_EQ(::write(m_event.get(), &one, sizeof one), ssize_t{sizeof one});
    }

    Instant armedDate;
    ClockState stateToFindWhenArmed = ClockState::Runs;

private:
    FileDescriptor m_event{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    ClockState m_state = ClockState::Runs;
};

} // namespace plenzo
