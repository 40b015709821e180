#include "support/private_bus.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <string_view>

namespace plenzo {

namespace {

// The limits are those of a session bus; the defaults would refuse messages above 32 MiB.
constexpr std::string_view configurationHead = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="max_incoming_bytes">1000000000</limit>
  <limit name="max_outgoing_bytes">1000000000</limit>
  <limit name="max_message_size">1000000000</limit>
)";

std::filesystem::path temporaryFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "private-bus-XXXXXX").string();
    return ::mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

std::string writeConfiguration(const std::filesystem::path& folder,
                               const std::filesystem::path& serviceFolder) {
    std::string path = folder / "bus.conf";
    std::ofstream file(path);
    file << configurationHead << "  <listen>unix:path=" << (folder / "bus").string()
         << "</listen>\n";
    if (!serviceFolder.empty()) {
        file << "  <servicedir>" << serviceFolder.string() << "</servicedir>\n";
    }
    file << "</busconfig>\n";
    return path;
}

/// Runs in the child: only calls that are safe after a fork.
[[noreturn]] void becomeDaemon(pid_t parent, const char* configuration, const char* addressPipe) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() == parent) {
        ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", configuration,
                 addressPipe, nullptr);
    }
    ::_exit(127);
}

/// The first line, without its end; empty when the writer closed the pipe before.
std::string readLine(int pipe) {
    std::string line;
    char character = 0;
    while (::read(pipe, &character, 1) == 1) {
        if (character == '\n') {
            return line;
        }
        line += character;
    }
    return {};
}

} // namespace

PrivateBus::PrivateBus(const std::filesystem::path& serviceFolder) : m_folder(temporaryFolder()) {
    std::array<int, 2> pipe{};
    if (m_folder.empty() || ::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return;
    }
    const std::string configuration =
        "--config-file=" + writeConfiguration(m_folder, serviceFolder);
    // A duplicate without close-on-exec would leak into other children, so the child makes its own.
    const std::string addressPipe = "--print-address=" + std::to_string(pipe[1]);
    const pid_t parent = ::getpid();
    m_daemon = ::fork();
    if (m_daemon == 0) {
        ::fcntl(pipe[1], F_SETFD, 0);
        becomeDaemon(parent, configuration.c_str(), addressPipe.c_str());
    }
    ::close(pipe[1]);
    m_address = readLine(pipe[0]);
    ::close(pipe[0]);
}

PrivateBus::~PrivateBus() {
    stop();
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void PrivateBus::stop() {
    if (m_daemon > 0) {
        ::kill(m_daemon, SIGKILL);
        ::waitpid(m_daemon, nullptr, 0);
        m_daemon = -1;
    }
}

} // namespace plenzo
