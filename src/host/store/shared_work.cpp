#include "host/store/shared_work.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

namespace plenzo {

namespace {

std::size_t helpersFor(std::size_t count, std::size_t worthAThread) {
    constexpr std::size_t most = 3;
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1U);
    return std::min({count / worthAThread, processors - 1, most});
}

} // namespace

std::optional<std::size_t> SharedWork::take() {
    const std::size_t index = m_next++;
    return index < m_count ? std::optional(index) : std::nullopt;
}

void SharedWork::run(std::size_t worthAThread, const std::function<void()>& work) const {
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() < helpersFor(m_count, worthAThread)) {
            helpers.emplace_back(work);
        }
    } catch (const std::system_error&) {
        // There are no more threads to be had; those that there are do all of it.
    }
    work();
}

} // namespace plenzo
