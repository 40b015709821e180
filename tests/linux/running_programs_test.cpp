#include "linux/running_programs.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace plenzo {
namespace {

namespace fs = std::filesystem;

/// A folder of processes like the kernel's.
class TheProcesses : public testing::Test {
protected:
    void add(const std::string& number, const std::string& commandLine,
             const std::string& executable = "/usr/bin/other", const std::string& group = "/") {
        const fs::path folder = processes.path() / number;
        fs::create_directories(folder);
        std::ofstream(folder / "cmdline", std::ios::binary) << commandLine;
        std::ofstream(folder / "cgroup") << "0::" << group << "\n";
        fs::create_symlink(executable, folder / "exe");
    }
    bool isRunning(const ProgramMarks& marks) const {
        return RunningPrograms(processes.path()).isRunning(marks);
    }
    bool isRunning(const std::string& path) const {
        return isRunning(ProgramMarks{.path = path, .controlGroup = {}});
    }

    TemporaryFolder processes;
};

using std::literals::operator""s;

TEST_F(TheProcesses, AreKnownByNameExecutableOrInterpretedFile) {
    add("1", "/usr/lib/birdmail/birdmail-bin\0-contentproc\0"s);
    add("2", "clawmail\0--receive\0"s);
    add("3", "renamed\0"s, "/opt/owl/owlmail");
    add("4", "/usr/bin/python3\0/usr/bin/snakemail\0--x\0"s);
    for (const char* path :
         {"/usr/bin/birdmail", "/usr/bin/clawmail", "/usr/bin/owlmail", "/usr/bin/snakemail"}) {
        EXPECT_TRUE(isRunning(path)) << path;
    }
    for (const char* path : {"/usr/bin/bird", "/usr/bin/python", "/usr/bin/ail", "", "/",
                             "/home/ana/snakemail", "/usr/bin/birdmail-bin-bin"}) {
        EXPECT_FALSE(isRunning(path)) << path;
    }
}

TEST_F(TheProcesses, OfASandboxAreKnownByTheirControlGroup) {
    add("1", "bird\0"s, "/app/bird",
        "/user.slice/app.slice/app-flatpak-org.example.Bird-417.scope");
    EXPECT_TRUE(
        isRunning(ProgramMarks{.path = {}, .controlGroup = "app-flatpak-org.example.Bird-"}));
    EXPECT_FALSE(
        isRunning(ProgramMarks{.path = {}, .controlGroup = "app-flatpak-org.example.Bir-"}));
    EXPECT_FALSE(isRunning(ProgramMarks{}));
}

TEST_F(TheProcesses, MayBeOddOrVanish) {
    add("17", "");
    add("self", "birdmail\0"s);
    add("18", std::string(100'000, 'x'));
    fs::create_directories(processes.path() / "19");
    EXPECT_FALSE(isRunning("/usr/bin/birdmail"));
    EXPECT_FALSE(RunningPrograms("/nowhere").isRunning({.path = "/a", .controlGroup = {}}));
}

TEST(TheProcessesOfTheSystem, HaveThisTestAmongThem) {
    const std::string self = fs::read_symlink("/proc/self/exe");
    EXPECT_TRUE(RunningPrograms().isRunning({.path = self, .controlGroup = {}}));
    EXPECT_FALSE(RunningPrograms().isRunning({.path = self + "-not", .controlGroup = {}}));
}

} // namespace
} // namespace plenzo
