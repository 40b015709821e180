#include "linux/inspector_on_bus.h"

#include "linux/agent_address.h"
#include "linux/wire/value_encoder.h"

#include <sdbus-c++/sdbus-c++.h>

#include <utility>

namespace plenzo {

InspectorOnBus::InspectorOnBus(MainLoop& loop, BusThread& busThread, Questions questions)
    : m_loop(loop), m_busThread(busThread),
      m_object(sdbus::createObject(busThread.connection(), agentaddress::objectPath)) {
    registerQuestion("PendingAlarms", std::move(questions.pendingAlarms));
    registerQuestion("DisplayedAlarms", std::move(questions.displayedAlarms));
    registerQuestion("DeliveredNotifications", std::move(questions.deliveredNotifications));
    m_object->finishRegistration();
}

void InspectorOnBus::registerQuestion(const char* name, std::function<Array()> answer) {
    const auto handle = [this, answer = std::move(answer)](sdbus::MethodCall call) {
        ask(std::move(call), answer);
    };
    m_object->registerMethod(agentaddress::inspectorInterface, name, "", {}, "aa{sv}", {"rows"},
                             handle);
}

void InspectorOnBus::ask(sdbus::MethodCall call, const std::function<Array()>& answer) {
    const std::uint64_t number = ++m_callCount;
    m_waitingCalls.emplace(number, std::move(call));
    m_loop.post([this, number, answer] {
        m_busThread.perform([this, number, rows = answer()] { reply(number, rows); });
    });
}

void InspectorOnBus::reply(std::uint64_t callNumber, const Array& rows) {
    const auto call = m_waitingCalls.extract(callNumber).mapped();
    auto answer = call.createReply();
    if (appendDictionaries(answer, rows)) {
        answer.send();
        return;
    }
    const sdbus::Error tooLarge("org.freedesktop.DBus.Error.LimitsExceeded",
                                "The answer is too large for one message");
    call.createErrorReply(tooLarge).send();
}

} // namespace plenzo
