#pragma once

#include "platform/power_notices.h"

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// Writes down what it is told, and does what the test wants it to do then.
class PowerJournal final : public PowerObserver {
public:
    void goingToSleep() override { note("sleep"); }
    void awakeFromSleep() override { note("awake"); }
    void shuttingDown() override { note("end"); }
    void shutdownCanceled() override { note("no end"); }

    std::vector<std::string> heard;
    std::function<void()> whenTold = [] {};

private:
    void note(const char* notice) {
        heard.emplace_back(notice);
        whenTold();
    }
};

} // namespace plenzo
