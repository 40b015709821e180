#include "core/alarm_sound.h"

#include "model/percent_escapes.h"

namespace plenzo {

namespace {

constexpr double shortestPauseSeconds = 3.0;

} // namespace

bool AlarmSound::hasJustPlayed() const {
    return m_lastSoundTime && m_clock.now() - *m_lastSoundTime <= shortestPauseSeconds;
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
