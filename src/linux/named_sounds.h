#pragma once

#include "linux/sound_files.h"
#include "platform/sounds.h"

#include <string>
#include <utility>

namespace plenzo {

/// Plays the file of a sound.
class SoundFilePlayer {
public:
    SoundFilePlayer() = default;
    SoundFilePlayer(const SoundFilePlayer&) = delete;
    SoundFilePlayer& operator=(const SoundFilePlayer&) = delete;
    virtual ~SoundFilePlayer() = default;

    /// Returns at once. Nothing happens where there is no audio, or the file is not a sound.
    virtual void play(const std::string& path) = 0;
};

/// The named sounds of the agent, the user, the system and the sound theme.
class NamedSounds final : public Sounds {
public:
    NamedSounds(SoundFolders folders, SoundFilePlayer& player)
        : m_files(std::move(folders)), m_player(player) {}

    [[nodiscard]] bool hasSound(const std::string& name) const override {
        return pathOf(name).has_value();
    }
    void play(const std::string& name) override;

    /// The sound's file, for somebody else to play. Nothing when there is none.
    [[nodiscard]] std::optional<std::string> pathOf(const std::string& name) const {
        return m_files.pathOf(name);
    }

private:
    SoundFiles m_files;
    SoundFilePlayer& m_player;
};

} // namespace plenzo
