#pragma once

#include "linux/wire/file_descriptor.h"
#include "support/private_bus.h"
#include "support/temporary_folder.h"

#include <string>

namespace plenzo {

/// The desktop of this test program alone: a bus, empty folders of the user and of the system, and
/// an X display that nobody answers on. It was itself started with an activation token. GLib reads
/// all this once, so there is one for the whole program, with the default programs of these
/// schemes:
///
///     plenzo-record   notes what it was started with
///     plenzo-fails    the same, and ends with a failure
///     plenzo-gone     its program is not installed
///     plenzo-called   is called on the bus as org.plenzo.Called-1, if somebody serves that
///     plenzo-absent   is called on the bus, where nobody has its name or can be started for it
///     plenzo-crooked  says that it is called on the bus, but its entry's name is no bus name
///     mailto          "birdmail", which notes the same and runs until it is told to end
class PrivateDesktop {
public:
    static PrivateDesktop& instance();

    /// What a program was started with, of those that were not asked for yet: the name of the
    /// program, the number of arguments, the first one and both token variables, separated by
    /// spaces. Waits until there is one, but not for ever.
    [[nodiscard]] std::string nextStart();

    /// Waits until the running one says "ended".
    std::string endMailClient();

    [[nodiscard]] const std::string& busAddress() const { return m_bus.address(); }

private:
    PrivateDesktop();

    void setEnvironment() const;
    /// Gives the path of the program.
    [[nodiscard]] std::string addProgram(const std::string& name,
                                         const std::string& shellLines = {}) const;
    void addEntry(const std::string& entryName, const std::string& scheme,
                  const std::string& lines) const;

    const TemporaryFolder m_folder;
    const PrivateBus m_bus;
    /// A pipe with a name, of which both ends are open here, so that a read never ends early.
    FileDescriptor m_notes;
    std::string m_unread;
};

} // namespace plenzo
