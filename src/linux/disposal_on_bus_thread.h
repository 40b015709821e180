#pragma once

#include "linux/bus_thread.h"
#include "platform/disposal.h"

namespace plenzo {

/// Drops things on the thread of the bus, which made most of them.
class DisposalOnBusThread final : public Disposal {
public:
    explicit DisposalOnBusThread(BusThread& busThread) : m_busThread(busThread) {}

    void dispose(std::shared_ptr<void> unneeded) override;

private:
    BusThread& m_busThread;
};

} // namespace plenzo
