#pragma once

#include <string>

namespace plenzo {

/// How the processes of a program are known. Empty texts say nothing.
struct ProgramMarks {
    /// Its path, from which it has its name.
    std::string path;
    /// Part of the name of its control group, for a program in a sandbox.
    std::string controlGroup;
};

/// The user's processes, as the folder of the kernel tells them. A process is one of a program
/// when it was called by the program's name, with "-bin" after it or not, when its executable has
/// that name, when it interprets the program's file, or when it is in the program's control group.
class RunningPrograms {
public:
    explicit RunningPrograms(std::string processFolder = "/proc");

    [[nodiscard]] bool isRunning(const ProgramMarks& marks) const;

private:
    std::string m_processFolder;
};

} // namespace plenzo
