#pragma once

#include "linux/bus_thread.h"
#include "linux/main_loop.h"
#include "propertylist/dictionary.h"

#include <sdbus-c++/IObject.h>
#include <sdbus-c++/Message.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace plenzo {

/// The read-only interface through which the running agent is looked at. Questions are answered on
/// the main loop, and the answers are written on the bus thread.
class InspectorOnBus {
public:
    /// Each gives an array of dictionaries.
    struct Questions {
        std::function<Array()> pendingAlarms;
        std::function<Array()> displayedAlarms;
        std::function<Array()> deliveredNotifications;
    };

    /// To be made before the thread starts. The questions are asked on the main loop.
    InspectorOnBus(MainLoop& loop, BusThread& busThread, Questions questions);

private:
    void registerQuestion(const char* name, std::function<Array()> answer);
    void ask(sdbus::MethodCall call, const std::function<Array()>& answer);
    void reply(std::uint64_t callNumber, const Array& rows);

    MainLoop& m_loop;
    BusThread& m_busThread;
    std::unique_ptr<sdbus::IObject> m_object;
    /// The calls that wait for their answers. Messages never leave the bus thread.
    std::map<std::uint64_t, sdbus::MethodCall> m_waitingCalls;
    std::uint64_t m_callCount = 0;
};

} // namespace plenzo
