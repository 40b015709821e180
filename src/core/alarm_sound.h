#pragma once

#include "platform/clock.h"
#include "platform/sounds.h"

#include <optional>
#include <string>

namespace plenzo {

/// The sound of alarms: one for alarms that fire together, and none soon after another.
class AlarmSound {
public:
    /// Without sounds (null) it is silent.
    AlarmSound(Sounds* sounds, const Clock& clock) : m_sounds(sounds), m_clock(clock) {}

    /// Plays the sound of that name, whose percent-encodings are undone, or "Basso" when there is
    /// none. Does nothing within 3 seconds of the last one.
    void play(const std::string& name);

private:
    [[nodiscard]] bool hasJustPlayed() const;

    Sounds* m_sounds;
    const Clock& m_clock;
    std::optional<Instant> m_lastSoundTime;
};

/// The sound of alarms that name none, or one that does not exist.
inline constexpr const char* defaultSoundName = "Basso";

} // namespace plenzo
