#pragma once

#include "linux/wire/file_descriptor.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// A program that we have started, in a session and a process group of its own, with nothing of
/// ours open and its input and output going nowhere. To be reaped before this object goes; who
/// leaves it to itself at the program's end need not.
class ChildProcess {
public:
    /// The environment as a whole: "NAME=value". Nothing when the program cannot be started, or
    /// the kernel is too old to watch it.
    [[nodiscard]] static std::optional<ChildProcess>
    start(const std::string& program, const std::vector<std::string>& arguments,
          const std::vector<std::string>& environment);

    /// Becomes readable when the program ends.
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }
    /// To the program and all of its group. Only until it is reaped: then the number may be
    /// somebody else's.
    void signalGroup(int signalNumber) const;
    /// Once it has ended: whether its exit status was 0.
    [[nodiscard]] bool reap() const;

private:
    ChildProcess(pid_t process, FileDescriptor descriptor)
        : m_process(process), m_descriptor(std::move(descriptor)) {}

    pid_t m_process;
    FileDescriptor m_descriptor;
};

} // namespace plenzo
