#include "linux/running_programs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// Of a command line only the first words matter.
std::string beginningOf(const fs::path& file) {
    std::array<char, 4096> bytes{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), bytes.size());
    return {bytes.data(), static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0))};
}

bool isProcessOfUser(const fs::path& folder) {
    const std::string name = folder.filename();
    struct stat status {};
    return std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; }) &&
           ::stat(folder.c_str(), &status) == 0 && status.st_uid == ::getuid();
}

bool isNamed(const fs::path& file, const std::string& name) {
    return file.filename() == name || file.filename() == name + "-bin";
}

/// What a command line begins with, up to its end or the next zero.
std::string takeWord(std::string_view& commandLine) {
    const auto end = std::min(commandLine.find('\0'), commandLine.size());
    std::string word(commandLine.substr(0, end));
    commandLine.remove_prefix(std::min(end + 1, commandLine.size()));
    return word;
}

bool isOfProgram(const fs::path& process, const std::string& program) {
    const std::string name = fs::path(program).filename();
    const std::string bytes = beginningOf(process / "cmdline");
    std::string_view commandLine = bytes;
    const std::string command = takeWord(commandLine);
    const std::string firstArgument = takeWord(commandLine);
    std::error_code error;
    return isNamed(command, name) || firstArgument == program ||
           isNamed(fs::read_symlink(process / "exe", error), name);
}

bool fits(const fs::path& process, const ProgramMarks& marks) {
    return (!marks.controlGroup.empty() &&
            beginningOf(process / "cgroup").find(marks.controlGroup) != std::string::npos) ||
           (!marks.path.empty() && isOfProgram(process, marks.path));
}

} // namespace

RunningPrograms::RunningPrograms(std::string processFolder)
    : m_processFolder(std::move(processFolder)) {}

bool RunningPrograms::isRunning(const ProgramMarks& marks) const {
    std::error_code error;
    fs::directory_iterator process(m_processFolder, error);
    while (!error && process != fs::directory_iterator()) {
        if (isProcessOfUser(process->path()) && fits(process->path(), marks)) {
            return true;
        }
        process.increment(error);
    }
    return false;
}

} // namespace plenzo
