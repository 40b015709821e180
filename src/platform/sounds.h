#pragma once

#include <string>

namespace plenzo {

/// The sounds that alarms have names for.
class Sounds {
public:
    Sounds() = default;
    Sounds(const Sounds&) = delete;
    Sounds& operator=(const Sounds&) = delete;
    virtual ~Sounds() = default;

    /// Whether there is a sound of that name, ours, the user's or the system's. A name is no path.
    [[nodiscard]] virtual bool hasSound(const std::string& name) const = 0;
    /// Plays it once, without waiting for its end. Nothing happens when there is none.
    virtual void play(const std::string& name) = 0;
};

} // namespace plenzo
