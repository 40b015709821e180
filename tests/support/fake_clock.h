#pragma once

#include "platform/clock.h"

namespace plenzo {

/// A clock that stands still until it is set.
class FakeClock final : public Clock {
public:
    explicit FakeClock(Instant now) : m_now(now) {}

    [[nodiscard]] Instant now() const override { return m_now; }
    void set(Instant now) { m_now = now; }

private:
    Instant m_now;
};

} // namespace plenzo
