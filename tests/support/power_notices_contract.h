#pragma once

#include "platform/power_notices.h"
#include "support/power_journal.h"

#include <gmock/gmock.h>

namespace plenzo {

/// What every implementation of PowerNotices keeps to. A subclass gives the notices, and ways to
/// bring each about, which return when it has been told.
class PowerNoticesContract {
public:
    PowerNoticesContract() = default;
    PowerNoticesContract(const PowerNoticesContract&) = delete;
    PowerNoticesContract& operator=(const PowerNoticesContract&) = delete;
    virtual ~PowerNoticesContract() = default;

    virtual PowerNotices& notices() = 0;
    virtual void fallAsleep() = 0;
    virtual void wakeUp() = 0;
    virtual void shutDown() = 0;
    virtual void cancelShutdown() = 0;

    void tellsInOrderWhileObserved() {
        PowerJournal journal;
        fallAsleep();
        wakeUp();
        Handle handle = notices().observe(journal);
        fallAsleep();
        wakeUp();
        shutDown();
        cancelShutdown();
        handle.reset();
        fallAsleep();
        EXPECT_THAT(journal.heard, testing::ElementsAre("sleep", "awake", "end", "no end"));
    }

    void letsTheObserverEndItsObservation() {
        PowerJournal journal;
        Handle handle = notices().observe(journal);
        journal.whenTold = [&handle] { handle.reset(); };
        fallAsleep();
        wakeUp();
        EXPECT_THAT(journal.heard, testing::ElementsAre("sleep"));
    }

    void tellsTheLaterObserverOnly() {
        PowerJournal first;
        PowerJournal second;
        Handle firstHandle = notices().observe(first);
        fallAsleep();
        const Handle secondHandle = notices().observe(second);
        firstHandle.reset();
        wakeUp();
        EXPECT_THAT(first.heard, testing::ElementsAre("sleep"));
        EXPECT_THAT(second.heard, testing::ElementsAre("awake"));
    }
};

} // namespace plenzo
