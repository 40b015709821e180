#pragma once

#include "linux/named_sounds.h"

#include <memory>
#include <string>

namespace plenzo {

/// Plays sounds with libcanberra, which connects and waits where it is called: on a thread of its
/// own. While that waits for an audio server, only the latest sound waits with it. At the end a
/// server that does not answer is left behind, with the thread.
class CanberraPlayer final : public SoundFilePlayer {
public:
    CanberraPlayer() = default;
    CanberraPlayer(const CanberraPlayer&) = delete;
    CanberraPlayer& operator=(const CanberraPlayer&) = delete;
    /// Ends what is being played. Waits one second at most.
    ~CanberraPlayer() override;

    void play(const std::string& path) override;

private:
    class Worker;

    /// Null until the first sound.
    std::shared_ptr<Worker> m_worker;
};

} // namespace plenzo
