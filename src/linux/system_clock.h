#pragma once

#include "platform/clock.h"

namespace plenzo {

/// The machine's wall clock (CLOCK_REALTIME).
class SystemClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override;
};

} // namespace plenzo
