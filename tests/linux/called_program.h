#pragma once

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace plenzo {

/// A program that is called on the bus, and when told so never answers.
class CalledProgram {
public:
    enum class Answers { Always, Never };

    explicit CalledProgram(const std::string& busAddress, Answers answers = Answers::Always)
        : m_connection(sdbus::createSessionBusConnectionWithAddress(busAddress)),
          m_object(sdbus::createObject(*m_connection, "/org/plenzo/Called_1")) {
        m_object->registerMethod("org.freedesktop.Application", "Open", "asa{sv}", "",
                                 [this, answers](sdbus::MethodCall call) {
                                     note(call);
                                     if (answers == Answers::Always) {
                                         call.createReply().send();
                                     }
                                 });
        m_object->finishRegistration();
        m_connection->requestName("org.plenzo.Called-1");
        m_connection->enterEventLoopAsync();
    }
    CalledProgram(const CalledProgram&) = delete;
    CalledProgram& operator=(const CalledProgram&) = delete;
    ~CalledProgram() { m_connection->leaveEventLoop(); }

    struct Call {
        std::vector<std::string> urls;
        std::map<std::string, sdbus::Variant> platformData;
    };

    /// Waits until there is one, but not for ever.
    Call nextCall() {
        std::unique_lock lock(m_mutex);
        const bool isCalled =
            m_called.wait_for(lock, std::chrono::seconds(20), [this] { return !m_calls.empty(); });
        if (!isCalled) {
            return {};
        }
        Call call = m_calls.front();
        m_calls.erase(m_calls.begin());
        return call;
    }

private:
    void note(sdbus::MethodCall& call) {
        const std::lock_guard lock(m_mutex);
        Call& noted = m_calls.emplace_back();
        call >> noted.urls >> noted.platformData;
        m_called.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_called;
    std::vector<Call> m_calls;
    std::unique_ptr<sdbus::IConnection> m_connection;
    std::unique_ptr<sdbus::IObject> m_object;
};

} // namespace plenzo
