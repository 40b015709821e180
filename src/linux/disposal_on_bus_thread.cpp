#include "linux/disposal_on_bus_thread.h"

#include <utility>

namespace plenzo {

void DisposalOnBusThread::dispose(std::shared_ptr<void> unneeded) {
    // The task owns it, and is destroyed where it ran.
    m_busThread.perform([unneeded = std::move(unneeded)] {});
}

} // namespace plenzo
