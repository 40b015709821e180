#pragma once

#include "platform/handle.h"

#include <functional>

namespace plenzo {

/// Waiting for an amount of running time, whatever the wall clock does meanwhile.
class Delays {
public:
    Delays() = default;
    Delays(const Delays&) = delete;
    Delays& operator=(const Delays&) = delete;
    virtual ~Delays() = default;

    /// Calls `elapsed` once from the main loop, and never from within this call.
    [[nodiscard]] virtual Handle after(int milliseconds, std::function<void()> elapsed) = 0;
};

} // namespace plenzo
