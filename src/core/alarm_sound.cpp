#include "core/alarm_sound.h"

#include "model/percent_escapes.h"

namespace plenzo {

namespace {

constexpr double shortestPauseSeconds = 3.0;

} // namespace

/// A clock that was set back since then does not silence what follows.
bool AlarmSound::hasJustPlayed() const {
    const double pauseSeconds = m_lastSoundTime ? m_clock.now() - *m_lastSoundTime : -1;
    return pauseSeconds >= 0 && pauseSeconds <= shortestPauseSeconds;
}

void AlarmSound::play(const std::string& name) {
    if (m_sounds == nullptr || hasJustPlayed()) {
        return;
    }
    const auto plainName = replacingPercentEscapes(name);
    const bool isThere = plainName && m_sounds->hasSound(*plainName);
    m_sounds->play(isThere ? *plainName : defaultSoundName);
    m_lastSoundTime = m_clock.now();
}

} // namespace plenzo
