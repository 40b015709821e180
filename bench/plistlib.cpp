#include "plistlib.h"

#include "linux/wire/sealed_memory_file.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace plenzo {

namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC) == 0) {
            readEnd = FileDescriptor(ends[0]);
            writeEnd = FileDescriptor(ends[1]);
        }
    }

    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

} // namespace

Plistlib::Plistlib(std::span<const std::byte> file) : m_file(sealedMemoryFile(file)) {
    if (m_file) {
        start("/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(m_file->get()));
    }
}

Plistlib::~Plistlib() {
    m_orders = FileDescriptor();
    if (m_process > 0) {
        ::waitpid(m_process, nullptr, 0);
    }
}

std::optional<double> Plistlib::secondsOf(Work work) {
    const char order = work == Work::Read ? 'r' : 'w';
    if (::write(m_orders.get(), &order, 1) != 1) {
        return std::nullopt;
    }
    std::string answer;
    while (!answer.ends_with('\n')) {
        char character = 0;
        const auto size = ::read(m_answers.get(), &character, 1);
        if (size == 1) {
            answer += character;
        } else if (size == 0 || errno != EINTR) {
            return std::nullopt;
        }
    }
    return std::strtod(answer.c_str(), nullptr);
}

void Plistlib::start(const std::string& filePath) {
    // A Python that is not there is seen when the order is written.
    ::signal(SIGPIPE, SIG_IGN);
    Pipe orders;
    Pipe answers;
    m_process = ::fork();
    if (m_process == 0) {
        ::dup2(orders.readEnd.get(), STDIN_FILENO);
        ::dup2(answers.writeEnd.get(), STDOUT_FILENO);
        ::execl(PLENZO_BENCH_FOLDER "/time-plistlib", "time-plistlib", filePath.c_str(), nullptr);
        ::_exit(127);
    }
    m_orders = std::move(orders.writeEnd);
    m_answers = std::move(answers.readEnd);
}

} // namespace plenzo
