#pragma once

#include "linux/main_loop.h"
#include "platform/delays.h"

#include <utility>

namespace plenzo {

class DelaysOnMainLoop final : public Delays {
public:
    explicit DelaysOnMainLoop(MainLoop& loop) : m_loop(loop) {}

    [[nodiscard]] Handle after(int milliseconds, std::function<void()> elapsed) override {
        return m_loop.after(milliseconds, std::move(elapsed));
    }

private:
    MainLoop& m_loop;
};

} // namespace plenzo
