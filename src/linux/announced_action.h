#pragma once

#include "linux/bus_service.h"
#include "linux/wire/file_descriptor.h"

#include <cstdint>
#include <functional>
#include <string>

namespace plenzo {

/// Something that the login manager is about to do, and that waits until we have got ready: its
/// announcements, each passed on once, and the inhibitor that makes it wait. The inhibitor is held
/// while nothing is announced, and let go of as soon as `begins` has returned.
class AnnouncedAction {
public:
    struct Description {
        /// What is inhibited: "sleep", "shutdown".
        const char* what;
        const char* signal;
        /// Is true from one signal to the other.
        const char* property;
    };

    AnnouncedAction(BusService& loginManager, const Description& description,
                    std::function<void()> begins, std::function<void()> isOver);

    /// The login manager is there: takes the inhibitor, and asks whether the action is under way.
    void loginManagerCame();
    /// The inhibitor is of no use any more. What was announced stays announced.
    void loginManagerLeft();

    /// Of the signal or the property. What is known already is not passed on.
    void note(bool isUnderWay);

private:
    void takeInhibitor();
    void releaseInhibitor();
    void keepInhibitor(std::uint64_t request, sdbus::MethodReply& reply);

    BusService& m_loginManager;
    Description m_description;
    std::function<void()> m_begins;
    std::function<void()> m_isOver;
    bool m_isUnderWay = false;
    FileDescriptor m_inhibitor;
    /// Grows whenever the inhibitor is asked for or let go of: only the last request's answer
    /// counts, what earlier ones bring is let go of at once.
    std::uint64_t m_request = 0;
};

} // namespace plenzo
