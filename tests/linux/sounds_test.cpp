#include "linux/named_sounds.h"
#include "linux/sound_themes.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

namespace fs = std::filesystem;

class FakePlayer final : public SoundFilePlayer {
public:
    void play(const std::string& path) override { played.push_back(path); }

    std::vector<std::string> played;
};

class ANamedSound : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_root / name; }
    std::string create(const std::string& name) const {
        fs::create_directories(fs::path(path(name)).parent_path());
        std::ofstream(path(name)) << "sound";
        return path(name);
    }
    void link(const std::string& target, const std::string& name) const {
        fs::create_directories(fs::path(path(name)).parent_path());
        fs::create_symlink(target, path(name));
    }
    void expectNone(const std::string& name) {
        EXPECT_FALSE(m_sounds.hasSound(name)) << name;
        m_sounds.play(name);
        EXPECT_THAT(m_player.played, IsEmpty()) << name;
    }

    TemporaryFolder m_folder;
    fs::path m_root = fs::canonical(m_folder.path());
    FakePlayer m_player;
    NamedSounds m_sounds{{.folders = {path("own"), path("user"), path("system")},
                          .themes = {"Chosen", "freedesktop"}},
                         m_player};
};

TEST_F(ANamedSound, IsTheFirstInOurFoldersThenInTheThemes) {
    const std::vector<std::string> inOrderOfSearch{
        "own/Ding.oga",
        "own/Ding.ogg",
        "own/Ding.wav",
        "user/Ding.oga",
        "system/Ding.wav",
        "user/Chosen/stereo/Ding.ogg",
        "system/Chosen/stereo/Ding.oga",
        "user/freedesktop/stereo/Ding.wav",
        "system/freedesktop/stereo/Ding.oga",
    };
    expectNone("Ding");
    for (const std::string& name : inOrderOfSearch) {
        create(name);
    }
    for (const std::string& name : inOrderOfSearch) {
        EXPECT_TRUE(m_sounds.hasSound("Ding"));
        m_sounds.play("Ding");
        EXPECT_EQ(m_player.played.back(), path(name));
        fs::remove(path(name));
    }
    m_player.played.clear();
    expectNone("Ding");
}

TEST_F(ANamedSound, IsSilencedByAThemeForItselfAndWhatFollows) {
    create("system/Chosen/stereo/Ding.disabled");
    create("system/freedesktop/stereo/Ding.oga");
    expectNone("Ding");
    const std::string nearer = create("user/Chosen/stereo/Ding.oga");
    EXPECT_EQ(m_sounds.pathOf("Ding"), nearer) << "the user's comes before the system's silence";
}

TEST_F(ANamedSound, IsNeverAPath) {
    create("secret.wav");
    create("own/inner/Ding.wav");
    create("own/..wav");
    create("own/...wav");
    create("own/.wav");
    create("own/Ding.wav");
    create("own/Bad\xFF.wav");
    const std::string tooLong(256, 'a');
    for (const std::string& name :
         {std::string("../secret"), path("secret"), path("own/Ding"), std::string("inner/Ding"),
          std::string("./Ding"), std::string("."), std::string(".."), std::string(),
          std::string("Ding\0", 5), std::string("\0Ding", 5), std::string("Bad\xFF"), tooLong,
          std::string(255, 'a'), std::string(1'000'000, 'a'), std::string(2, '/')}) {
        expectNone(name);
    }
}

TEST_F(ANamedSound, MayHaveAnyOtherName) {
    for (const std::string& name :
         {std::string("Zwölf Uhr"), std::string("%n $(x)"), std::string("-x"), std::string("a:b\n"),
          std::string(251, 'a')}) {
        const std::string file = create("user/" + name + ".wav");
        EXPECT_EQ(m_sounds.pathOf(name), file);
    }
}

TEST_F(ANamedSound, IsARegularFile) {
    fs::create_directories(path("own/Folder.wav"));
    ASSERT_EQ(::mkfifo(path("own/Pipe.wav").c_str(), 0600), 0);
    link("Loop.wav", "own/Loop.wav");
    link("Nothing.wav", "own/Dangling.wav");
    link("/dev/null", "own/Device.wav");
    for (const char* name : {"Folder", "Pipe", "Loop", "Dangling", "Device"}) {
        expectNone(name);
    }
    const std::string further = create("user/Pipe.wav");
    EXPECT_EQ(m_sounds.pathOf("Pipe"), further) << "what is no sound hides none";
}

TEST_F(ANamedSound, IsNotOutsideOfTheFolders) {
    create("secret.wav");
    create("own-neighbour/secret.wav");
    create("elsewhere/stereo/Theme.wav");
    fs::create_directories(path("own"));
    link("../secret.wav", "own/Relative.wav");
    link(path("secret.wav"), "own/Absolute.wav");
    link("../own-neighbour/secret.wav", "own/Neighbour.wav");
    link("Relative.wav", "own/Chain.wav");
    link("../elsewhere", "user/Chosen");
    for (const char* name : {"Relative", "Absolute", "Neighbour", "Chain", "Theme"}) {
        expectNone(name);
    }
}

TEST_F(ANamedSound, MayBeALinkWithinTheFolders) {
    const std::string bell = create("system/freedesktop/stereo/bell.oga");
    link("../system/freedesktop/stereo/bell.oga", "user/Ding.oga");
    EXPECT_EQ(m_sounds.pathOf("Ding"), bell);
    create("stick/Dong.wav");
    link("stick", "own");
    EXPECT_EQ(m_sounds.pathOf("Dong"), path("stick/Dong.wav")) << "the folder itself is a link";
}

TEST(TheFoldersOfSounds, AreOursTheUsersAndTheSystems) {
    const EnvironmentVariable data("XDG_DATA_HOME", "/data");
    {
        const EnvironmentVariable system("XDG_DATA_DIRS", "/a:relative::/b");
        EXPECT_THAT(soundFoldersOfUser("/own").folders,
                    ElementsAre("/own/sounds", "/data/sounds", "/a/sounds", "/b/sounds"));
    }
    for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
        const EnvironmentVariable system("XDG_DATA_DIRS", unset);
        EXPECT_THAT(soundFoldersOfUser("/own").folders,
                    ElementsAre("/own/sounds", "/data/sounds", "/usr/local/share/sounds",
                                "/usr/share/sounds"));
    }
    EXPECT_EQ(soundFoldersOfUser("/own").themes.back(), "freedesktop");
}

class WaveFile {
public:
    explicit WaveFile(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        m_bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    std::size_t size() const { return m_bytes.size(); }
    /// Four characters.
    std::string text(std::size_t at) const { return m_bytes.substr(at, 4); }
    /// Little-endian.
    unsigned number(std::size_t at, std::size_t length) const {
        unsigned result = 0;
        for (std::size_t place = at + length; place > at; --place) {
            result = result << 8U | static_cast<unsigned char>(m_bytes.at(place - 1));
        }
        return result;
    }
    int loudest() const {
        int result = 0;
        for (std::size_t at = 44; at < size(); at += 2) {
            result = std::max(result, std::abs(sample(at)));
        }
        return result;
    }
    int sample(std::size_t at) const { return static_cast<std::int16_t>(number(at, 2)); }

private:
    std::string m_bytes;
};

class OurSound : public testing::TestWithParam<const char*> {};

TEST_P(OurSound, IsAShortNormalisedWaveFileThatEndsInSilence) {
    const SoundFiles files({.folders = {std::string(PLENZO_RESOURCES) + "/sounds"}, .themes = {}});
    const auto path = files.pathOf(GetParam());
    ASSERT_TRUE(path);
    const WaveFile wave(*path);
    ASSERT_GT(wave.size(), 1000U);
    EXPECT_LT(wave.size(), 60'000U);
    EXPECT_EQ(wave.text(0) + wave.text(8) + wave.text(12) + wave.text(36), "RIFFWAVEfmt data");
    EXPECT_EQ(wave.number(4, 4), wave.size() - 8);
    EXPECT_EQ(wave.number(40, 4), wave.size() - 44);
    constexpr unsigned pulseCode = 1;
    EXPECT_EQ(wave.number(20, 2), pulseCode);
    EXPECT_EQ(wave.number(22, 2), 1U) << "channels";
    EXPECT_EQ(wave.number(24, 4), 44'100U) << "samples a second";
    EXPECT_EQ(wave.number(34, 2), 16U) << "bits";
    EXPECT_NEAR(wave.loudest(), 0.8 * 32767, 1);
    EXPECT_EQ(wave.sample(44), 0);
    EXPECT_EQ(wave.sample(wave.size() - 2), 0);
}

INSTANTIATE_TEST_SUITE_P(OfTheAgent, OurSound,
                         testing::Values("Basso", "Doorbell", "Droplet", "Lantern", "Stairs",
                                         "Teaspoon"));

TEST(SoundThemes, AreSearchedWithWhatTheyInherit) {
    const TemporaryFolder folder;
    const auto inherit = [&folder](const std::string& place, const std::string& parents) {
        std::filesystem::create_directories(folder.path() / place);
        std::ofstream(folder.path() / place / "index.theme") << "[Sound Theme]\nName=x\n"
                                                             << parents << "\nDirectories=stereo\n";
    };
    inherit("user/Chosen", "Inherits=Soft,Loud");
    inherit("system/Chosen", "Inherits=Hidden");
    inherit("system/Soft", "Inherits=freedesktop,Base");
    inherit("system/Loud", "Inherits=Chosen,../../etc,");
    inherit("system/Alone", "Inherit=Base");
    const std::vector<std::string> folders{folder.path() / "user", folder.path() / "system"};
    EXPECT_THAT(soundThemesFrom("Chosen", folders),
                ElementsAre("Chosen", "Soft", "Base", "Loud", "freedesktop"));
    EXPECT_THAT(soundThemesFrom("Alone", folders), ElementsAre("Alone", "freedesktop"));
    EXPECT_THAT(soundThemesFrom("../user/Chosen", folders), ElementsAre("freedesktop"));
    EXPECT_THAT(soundThemesFrom("", folders), ElementsAre("freedesktop"));
}

} // namespace
} // namespace plenzo
