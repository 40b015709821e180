#include "linux/named_sounds.h"
#include "support/fake_actions.h"
#include "support/sounds_contract.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <fstream>

namespace plenzo {
namespace {

class FakeSoundsUnderContract final : public SoundsContract {
public:
    Sounds& sounds() override { return m_sounds; }
    void install(const std::string& name) override { m_sounds.installed.insert(name); }
    std::vector<std::string> played() override { return m_sounds.played; }

private:
    FakeSounds m_sounds;
};

class NamedSoundsUnderContract final : public SoundsContract, private SoundFilePlayer {
public:
    Sounds& sounds() override { return m_sounds; }
    void install(const std::string& name) override {
        std::ofstream(m_folder.path() / (name + ".wav")) << "sound";
    }
    std::vector<std::string> played() override { return m_played; }

private:
    void play(const std::string& path) override {
        m_played.push_back(std::filesystem::path(path).stem());
    }

    TemporaryFolder m_folder;
    std::vector<std::string> m_played;
    NamedSounds m_sounds{{.folders = {m_folder.path().string()}, .themes = {}}, *this};
};

template <typename Contract>
class TheSounds : public testing::Test {
protected:
    Contract contract;
};

using KindsOfSounds = testing::Types<FakeSoundsUnderContract, NamedSoundsUnderContract>;
TYPED_TEST_SUITE(TheSounds, KindsOfSounds);

TYPED_TEST(TheSounds, AreThereAndArePlayedByTheirNames) {
    this->contract.areThereAndArePlayedByTheirNames();
}

TYPED_TEST(TheSounds, AreNoPathsAndNothingElse) {
    this->contract.areNoPathsAndNothingElse();
}

} // namespace
} // namespace plenzo
