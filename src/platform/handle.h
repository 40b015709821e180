#pragma once

#include <memory>

namespace plenzo {

/// What stands behind a timer, a subscription or an observer: destroying it cancels.
class Registration {
public:
    Registration() = default;
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    virtual ~Registration() = default;
};

/// Keeps a registration alive. Empty when nothing is registered. A callback may destroy the handle
/// through which it was registered.
using Handle = std::unique_ptr<Registration>;

} // namespace plenzo
