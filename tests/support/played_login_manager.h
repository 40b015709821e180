#pragma once

#include "linux/wire/file_descriptor.h"
#include "support/served_bus.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// The login manager's part in sleep and shut-down. As the real one it gives out the writing ends
/// of pipes, and knows an inhibitor to be held while the end is open somewhere.
class PlayedLoginManager {
public:
    struct Properties {
        bool preparingForSleep = false;
        bool preparingForShutdown = false;
    };
    enum class Answers { AtOnce, WhenReleased, WithErrors };

    PlayedLoginManager(ServedBus& bus, Properties properties, Answers answers = Answers::AtOnce)
        : m_bus(bus), m_service(bus, "org.freedesktop.login1", "/org/freedesktop/login1"),
          m_answers(answers) {
        sdbus::IObject& object = m_service.object();
        object.registerMethod(interface, "Inhibit", "ssss", "h",
                              [this](sdbus::MethodCall call) { inhibit(std::move(call)); });
        object.registerProperty("PreparingForSleep").onInterface(interface).withGetter([=] {
            return properties.preparingForSleep;
        });
        object.registerProperty("PreparingForShutdown").onInterface(interface).withGetter([=] {
            return properties.preparingForShutdown;
        });
        m_service.begin();
    }

    explicit PlayedLoginManager(ServedBus& bus) : PlayedLoginManager(bus, Properties()) {}

    [[nodiscard]] bool isHeld(const std::string& what) const { return heldCount(what) > 0; }
    [[nodiscard]] int heldCount(const std::string& what) const {
        int count = 0;
        for (const Inhibitor& inhibitor : m_inhibitors) {
            pollfd end{inhibitor.readingEnd.get(), 0, 0};
            const bool isClosed = ::poll(&end, 1, 0) == 1;
            count += inhibitor.what == what && !isClosed ? 1 : 0;
        }
        return count;
    }

    void prepareForSleep(bool start, const std::string& destination = {}) {
        m_service.send(interface, "PrepareForSleep", destination, start);
    }
    void prepareForShutdown(bool start) {
        m_service.send(interface, "PrepareForShutdown", {}, start);
    }
    void emitNonsense() {
        m_service.send(interface, "PrepareForSleep", {}, std::string("true"));
        m_service.send(interface, "PrepareForSleep", {});
        m_service.send(interface, "PrepareForShutdown", {}, 1.0, true);
    }

    void releaseAnswers() {
        m_answers = Answers::AtOnce;
        for (const Request& request : std::exchange(m_unanswered, {})) {
            answer(request);
        }
        roundTrip();
    }
    void roundTrip() { m_bus.roundTrip(m_service.connection()); }

    /// "what, who, mode" of each request for an inhibitor.
    std::vector<std::string> requests;

private:
    static constexpr const char* interface = "org.freedesktop.login1.Manager";

    struct Request {
        std::string what;
        sdbus::MethodCall call;
    };
    struct Inhibitor {
        std::string what;
        FileDescriptor readingEnd;
    };

    void inhibit(sdbus::MethodCall call) {
        std::string what;
        std::string who;
        std::string why;
        std::string mode;
        call >> what >> who >> why >> mode;
        EXPECT_FALSE(why.empty());
        requests.push_back(what + ", " + who + ", " + mode);
        if (m_answers == Answers::WhenReleased) {
            m_unanswered.push_back({what, std::move(call)});
        } else {
            answer({what, std::move(call)});
        }
    }

    void answer(const Request& request) {
        if (m_answers == Answers::WithErrors) {
            request.call.createErrorReply(sdbus::Error("org.test.Error", "no")).send();
            return;
        }
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
        m_inhibitors.push_back({request.what, FileDescriptor(pipe[0])});
        sdbus::MethodReply reply = request.call.createReply();
        reply << sdbus::UnixFd(pipe[1], sdbus::adopt_fd);
        reply.send();
    }

    ServedBus& m_bus;
    PlayedService m_service;
    Answers m_answers;
    std::vector<Request> m_unanswered;
    std::vector<Inhibitor> m_inhibitors;
};

} // namespace plenzo
