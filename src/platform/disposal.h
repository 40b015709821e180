#pragma once

#include <memory>

namespace plenzo {

/// Where large things that nobody needs any longer are let go of, so that the main loop does not
/// wait until all their memory is free.
class Disposal {
public:
    Disposal() = default;
    Disposal(const Disposal&) = delete;
    Disposal& operator=(const Disposal&) = delete;
    virtual ~Disposal() = default;

    /// Takes over a share in something and drops it, now or soon, perhaps on another thread. What
    /// its destructor does must be fit for that; values, records and collections of them are.
    virtual void dispose(std::shared_ptr<void> unneeded) = 0;
};

} // namespace plenzo
