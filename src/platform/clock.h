#pragma once

#include "dates/instant.h"

namespace plenzo {

/// The wall clock. The only way in which the agent learns what time it is.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;
};

} // namespace plenzo
