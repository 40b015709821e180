#include "linux/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace plenzo {

namespace {

/// Everything that may fail here wants memory; the program is then not started.
class SpawnAttributes {
public:
    SpawnAttributes() {
        sigset_t none{};
        sigset_t all{};
        ::sigemptyset(&none);
        ::sigfillset(&all);
        m_isUsable =
            ::posix_spawnattr_init(&m_attributes) == 0 &&
            ::posix_spawnattr_setsigmask(&m_attributes, &none) == 0 &&
            ::posix_spawnattr_setsigdefault(&m_attributes, &all) == 0 &&
            ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK |
                                                          POSIX_SPAWN_SETSIGDEF) == 0;
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&m_attributes); }

    [[nodiscard]] const posix_spawnattr_t* get() const {
        return m_isUsable ? &m_attributes : nullptr;
    }

private:
    posix_spawnattr_t m_attributes{};
    bool m_isUsable = false;
};

/// The standard streams go nowhere, and what a library may have left open does not go along.
class SpawnFileActions {
public:
    SpawnFileActions() {
        m_isUsable = ::posix_spawn_file_actions_init(&m_actions) == 0;
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            m_isUsable = m_isUsable && ::posix_spawn_file_actions_addopen(
                                           &m_actions, stream, "/dev/null", O_RDWR, 0) == 0;
        }
        m_isUsable = m_isUsable &&
                     ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1) == 0;
    }
    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;
    ~SpawnFileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    [[nodiscard]] const posix_spawn_file_actions_t* get() const {
        return m_isUsable ? &m_actions : nullptr;
    }

private:
    posix_spawn_file_actions_t m_actions{};
    bool m_isUsable = false;
};

/// The interface takes pointers to texts that it does not change.
std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

FileDescriptor watchable(pid_t process) {
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

int waitFor(pid_t process) {
    int status = 0;
    pid_t waited = 0;
    do {
        waited = ::waitpid(process, &status, 0);
    } while (waited < 0 && errno == EINTR);
    return waited == process ? status : -1;
}

} // namespace

std::optional<ChildProcess> ChildProcess::start(const std::string& program,
                                                const std::vector<std::string>& arguments,
                                                const std::vector<std::string>& environment) {
    std::vector<std::string> command{program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = environment;
    const SpawnAttributes attributes;
    const SpawnFileActions actions;
    pid_t process = 0;
    if (attributes.get() == nullptr || actions.get() == nullptr ||
        ::posix_spawn(&process, program.c_str(), actions.get(), attributes.get(),
                      pointers(command).data(), pointers(variables).data()) != 0) {
        return std::nullopt;
    }
    ChildProcess child(process, watchable(process));
    if (!child.m_descriptor.isOpen()) {
        child.signalGroup(SIGKILL);
        waitFor(process);
        return std::nullopt;
    }
    return child;
}

void ChildProcess::signalGroup(int signalNumber) const {
    ::kill(-m_process, signalNumber);
}

bool ChildProcess::reap() const {
    const int status = waitFor(m_process);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace plenzo
