#include "linux/termination_signals.h"

#include "linux/wire/file_descriptor.h"

#include <fcntl.h>
#include <sys/eventfd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

constexpr std::array signalNumbers{SIGTERM, SIGINT, SIGHUP};

/// What a hang-up adds to the event, where the others add one: it counts more than they.
constexpr std::uint64_t hangUpMark = std::uint64_t{1} << 32U;

/// The only thing that a signal handler may touch.
std::atomic<int> eventDescriptor{-1};

void noteSignal(int signalNumber) {
    const int savedError = errno;
    const std::uint64_t mark = signalNumber == SIGHUP ? hangUpMark : 1;
    [[maybe_unused]] const auto written = ::write(eventDescriptor.load(), &mark, sizeof mark);
    errno = savedError;
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers) {
        ::sigaction(number, &action, nullptr);
    }
}

class SignalRegistration final : public Registration {
public:
    SignalRegistration(MainLoop& loop, FileDescriptor event,
                       std::function<void(TerminationRequest)> requested)
        : m_event(std::move(event)) {
        eventDescriptor = m_event.get();
        m_watch = loop.watch(m_event.get(), MainLoop::Readiness::Readable,
                             [descriptor = m_event.get(), requested = std::move(requested)] {
                                 std::uint64_t count = 0;
                                 if (::read(descriptor, &count, sizeof count) == sizeof count) {
                                     requested(count >= hangUpMark ? TerminationRequest::HangUp
                                                                   : TerminationRequest::Quit);
                                 }
                             });
        setHandlers(noteSignal);
    }
    SignalRegistration(const SignalRegistration&) = delete;
    SignalRegistration& operator=(const SignalRegistration&) = delete;
    ~SignalRegistration() override {
        setHandlers(SIG_DFL);
        eventDescriptor = -1;
    }

private:
    FileDescriptor m_event;
    Handle m_watch;
};

} // namespace

Handle onTerminationRequest(MainLoop& loop, std::function<void(TerminationRequest)> requested) {
    FileDescriptor event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!event.isOpen()) {
        return nullptr;
    }
    return std::make_unique<SignalRegistration>(loop, std::move(event), std::move(requested));
}

} // namespace plenzo
