#pragma once

#include "platform/handle.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace plenzo {

/// A main loop of a fake's own: what is to be called later, in order, unless its handle is gone.
class Later {
public:
    [[nodiscard]] Handle call(std::function<void()> task) {
        auto shared = std::make_shared<std::function<void()>>(std::move(task));
        m_tasks.emplace_back(shared);
        return std::make_unique<Keeper>(std::move(shared));
    }

    /// Also what the tasks add.
    void run() {
        while (!m_tasks.empty()) {
            runNext();
        }
    }
    void runNext() {
        if (m_tasks.empty()) {
            return;
        }
        const auto task = m_tasks.front().lock();
        m_tasks.pop_front();
        if (task) {
            (*task)();
        }
    }

private:
    class Keeper final : public Registration {
    public:
        explicit Keeper(std::shared_ptr<std::function<void()>> task) : m_task(std::move(task)) {}

    private:
        std::shared_ptr<std::function<void()>> m_task;
    };

    std::deque<std::weak_ptr<std::function<void()>>> m_tasks;
};

} // namespace plenzo
