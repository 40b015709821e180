#pragma once

#include "linux/main_loop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <functional>

namespace plenzo {

/// A main loop that runs as long as a test wants it to.
class RunningLoop {
public:
    RunningLoop() = default;
    RunningLoop(const RunningLoop&) = delete;
    RunningLoop& operator=(const RunningLoop&) = delete;
    ~RunningLoop() {
        // What the loop was to delete later.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    [[nodiscard]] MainLoop& loop() { return m_loop; }

    /// Runs until the condition holds, which events of the loop have to bring about.
    void runUntil(const std::function<bool()>& isDone) {
        constexpr int limitMilliseconds = 20000;
        bool isLate = false;
        const Handle limit = m_loop.after(limitMilliseconds, [&isLate] { isLate = true; });
        while (!isDone() && !isLate) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        EXPECT_TRUE(isDone());
    }

private:
    int m_argumentCount = 0;
    QCoreApplication m_application{m_argumentCount, nullptr};
    MainLoop m_loop;
};

} // namespace plenzo
