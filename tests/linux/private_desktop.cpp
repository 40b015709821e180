#include "private_desktop.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

} // namespace

PrivateDesktop& PrivateDesktop::instance() {
    static PrivateDesktop desktop;
    return desktop;
}

PrivateDesktop::PrivateDesktop() {
    setEnvironment();
    fs::create_directories(m_folder.file("home/config"));
    ::mkfifo(m_folder.file("notes").c_str(), 0600);
    m_notes = FileDescriptor(::open(m_folder.file("notes").c_str(), O_RDWR | O_CLOEXEC));

    const std::string called = "DBusActivatable=true\nExec=";
    addEntry("record", "plenzo-record", "Exec=" + addProgram("record") + " %u");
    addEntry("fails", "plenzo-fails", "Exec=" + addProgram("fails", "exit 3") + " %u");
    addEntry("gone", "plenzo-gone", "Exec=" + m_folder.file("bin/gone") + " %u");
    addEntry("org.plenzo.Called-1", "plenzo-called", called + "/bin/false");
    addEntry("org.plenzo.Absent", "plenzo-absent", called + "/bin/false");
    addEntry("crooked", "plenzo-crooked", called + addProgram("crooked") + " %u");
    addEntry("birdmail", "mailto",
             "Exec=env A=b " +
                 addProgram("birdmail", "while [ -d '" + m_folder.path().string() +
                                            "' ] && ! rm '" + m_folder.file("end") +
                                            "' 2>/dev/null; do sleep 0.02; done; echo ended >'" +
                                            m_folder.file("notes") + "'") +
                 " %u");
}

std::string PrivateDesktop::endMailClient() {
    std::ofstream(m_folder.file("end")) << "now";
    return nextStart();
}

void PrivateDesktop::setEnvironment() const {
    const std::pair<const char*, std::string> variables[] = {
        {"HOME", m_folder.file("home")},
        {"XDG_DATA_HOME", m_folder.file("home/data")},
        {"XDG_CONFIG_HOME", m_folder.file("home/config")},
        {"XDG_DATA_DIRS", m_folder.file("system/data")},
        {"XDG_CONFIG_DIRS", m_folder.file("system/config")},
        {"DBUS_SESSION_BUS_ADDRESS", m_bus.address()},
        {"DISPLAY", ":4711"},
        {"DESKTOP_STARTUP_ID", "inherited"},
        {"XDG_ACTIVATION_TOKEN", "inherited"}};
    for (const auto& [name, value] : variables) {
        ::setenv(name, value.c_str(), 1);
    }
    ::unsetenv("XDG_CURRENT_DESKTOP");
}

std::string PrivateDesktop::addProgram(const std::string& name,
                                       const std::string& shellLines) const {
    std::string path = m_folder.file("bin/" + name);
    write(path, "#!/bin/sh\nprintf '%s %s %s %s %s\\n' " + name +
                    R"( "$#" "$1" "${DESKTOP_STARTUP_ID-none}" "${XDG_ACTIVATION_TOKEN-none}" >')" +
                    m_folder.file("notes") + "'\n" + shellLines + "\n");
    ::chmod(path.c_str(), 0700);
    return path;
}

void PrivateDesktop::addEntry(const std::string& entryName, const std::string& scheme,
                              const std::string& lines) const {
    write(m_folder.file("home/data/applications/" + entryName + ".desktop"),
          "[Desktop Entry]\nType=Application\nName=" + entryName + "\nMimeType=x-scheme-handler/" +
              scheme + ";\n" + lines + "\n");
    const fs::path defaults = m_folder.file("home/config/mimeapps.list");
    const bool isFirst = !fs::exists(defaults);
    std::ofstream(defaults, std::ios::app)
        << (isFirst ? "[Default Applications]\n" : "") << "x-scheme-handler/" << scheme << "="
        << entryName << ".desktop\n";
}

std::string PrivateDesktop::nextStart() {
    constexpr int limitMilliseconds = 20000;
    while (m_unread.find('\n') == std::string::npos) {
        pollfd readable{m_notes.get(), POLLIN, 0};
        std::array<char, 4096> buffer{};
        if (::poll(&readable, 1, limitMilliseconds) != 1) {
            return "nothing was started";
        }
        const auto size = ::read(m_notes.get(), buffer.data(), buffer.size());
        m_unread.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
    const auto end = m_unread.find('\n');
    std::string line = m_unread.substr(0, end);
    m_unread.erase(0, end + 1);
    return line;
}

} // namespace plenzo
