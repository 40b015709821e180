#include "linux/canberra_player.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

namespace plenzo {
namespace {

/// ALSA writes what it is to play into a pipe, which stands for the machine's audio.
class ASoundPlayer : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(::mkfifo(m_pipe.c_str(), 0600), 0);
        std::ofstream(m_settings) << "pcm.!default { type file  format raw  file \"" << m_pipe
                                  << "\"  slave.pcm { type null } }\n";
        m_descriptor = ::open(m_pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_GE(m_descriptor, 0);
    }
    void TearDown() override { ::close(m_descriptor); }

    bool waitForSound() const {
        constexpr int patienceMilliseconds = 20'000;
        pollfd readiness{.fd = m_descriptor, .events = POLLIN, .revents = 0};
        return ::poll(&readiness, 1, patienceMilliseconds) == 1;
    }
    /// What was played until the device was closed.
    std::string heard() const {
        std::string samples;
        char part[4096];
        while (waitForSound()) {
            const ssize_t count = ::read(m_descriptor, part, sizeof part);
            if (count <= 0) {
                break;
            }
            samples.append(part, static_cast<std::size_t>(count));
        }
        return samples;
    }
    static std::string samplesOf(const std::string& path) {
        constexpr std::size_t headerBytes = 44;
        std::ifstream file(path, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        return bytes.substr(headerBytes);
    }

    static long threads() {
        namespace fs = std::filesystem;
        return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
    }

    const long m_threadsBefore = threads();
    TemporaryFolder m_folder;
    std::string m_pipe = m_folder.file("pipe");
    std::string m_settings = m_folder.file("asound.conf");
    EnvironmentVariable m_alsa{"ALSA_CONFIG_PATH", m_settings.c_str()};
    EnvironmentVariable m_driver{"CANBERRA_DRIVER", "alsa"};
    int m_descriptor = -1;
    const std::string m_basso = std::string(PLENZO_RESOURCES) + "/sounds/Basso.wav";
    std::unique_ptr<CanberraPlayer> m_player = std::make_unique<CanberraPlayer>();
};

TEST_F(ASoundPlayer, PlaysTheFileAsItIs) {
    m_player->play(m_basso);
    EXPECT_EQ(heard(), samplesOf(m_basso));
}

TEST_F(ASoundPlayer, PlaysAfterWhatCouldNotBePlayed) {
    std::ofstream(m_folder.file("Text.wav")) << "RIFF no sound at all";
    m_player->play(m_folder.file("Text.wav"));
    m_player->play(m_folder.file("Missing.wav"));
    m_player->play(m_basso);
    EXPECT_EQ(heard(), samplesOf(m_basso));
}

TEST_F(ASoundPlayer, LeavesAudioBehindThatDoesNotTakeTheSound) {
    constexpr int pipeBytes = 4096;
    ASSERT_EQ(::fcntl(m_descriptor, F_SETPIPE_SZ, pipeBytes), pipeBytes);
    m_player->play(m_basso);
    ASSERT_TRUE(waitForSound());
    m_player->play(m_basso);
    m_player.reset();
    const std::string rest = heard();
    // The thread that was left must not meet the end of the program.
    while (threads() > m_threadsBefore) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(rest.empty()) << "it was at work when the player left it";
}

} // namespace
} // namespace plenzo
