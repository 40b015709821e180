#include "linux/named_sounds.h"

namespace plenzo {

void NamedSounds::play(const std::string& name) {
    if (const auto path = pathOf(name)) {
        m_player.play(*path);
    }
}

} // namespace plenzo
