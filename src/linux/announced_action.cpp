#include "linux/announced_action.h"

#include "linux/login_manager_address.h"

#include <fcntl.h>
#include <sdbus-c++/Types.h>

#include <utility>

namespace plenzo {

AnnouncedAction::AnnouncedAction(BusService& loginManager, const Description& description,
                                 std::function<void()> begins, std::function<void()> isOver)
    : m_loginManager(loginManager), m_description(description), m_begins(std::move(begins)),
      m_isOver(std::move(isOver)) {
    m_loginManager.onSignal(loginmanager::interface, m_description.signal,
                            [this](sdbus::Message& signal) {
                                bool isUnderWay = false;
                                signal >> isUnderWay;
                                note(isUnderWay);
                            });
}

void AnnouncedAction::loginManagerCame() {
    takeInhibitor();
    m_loginManager.call(
        {loginmanager::path, "org.freedesktop.DBus.Properties", "Get"},
        [this](sdbus::MethodReply* reply) {
            if (reply != nullptr) {
                sdbus::Variant value;
                *reply >> value;
                note(value.get<bool>());
            }
        },
        loginmanager::interface, m_description.property);
}

void AnnouncedAction::loginManagerLeft() {
    releaseInhibitor();
}

void AnnouncedAction::note(bool isUnderWay) {
    if (isUnderWay == m_isUnderWay) {
        return;
    }
    m_isUnderWay = isUnderWay;
    if (isUnderWay) {
        m_begins();
        releaseInhibitor();
    } else {
        m_isOver();
        takeInhibitor();
    }
}

void AnnouncedAction::takeInhibitor() {
    const std::uint64_t request = ++m_request;
    m_loginManager.call(
        {loginmanager::path, loginmanager::interface, "Inhibit"},
        [this, request](sdbus::MethodReply* reply) {
            if (reply != nullptr) {
                keepInhibitor(request, *reply);
            }
        },
        m_description.what, "Plenzo Alarm", "Alarms are put in order before", "delay");
}

void AnnouncedAction::releaseInhibitor() {
    ++m_request;
    m_inhibitor = FileDescriptor();
}

void AnnouncedAction::keepInhibitor(std::uint64_t request, sdbus::MethodReply& reply) {
    sdbus::UnixFd descriptor;
    reply >> descriptor;
    if (request == m_request) {
        // Programs that we start must not inherit it: they would hold the machine up for longer.
        m_inhibitor = FileDescriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, 0));
    }
}

} // namespace plenzo
