#pragma once

#include "platform/system_change_notices.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// Writes down what it is told, and does what the test wants it to do then.
class SystemChangeJournal final : public SystemChangeObserver {
public:
    void systemTimeZoneChanged(const TimeZone& previous) override {
        note("from " + previous.name());
    }
    void systemTimeChanged() override { note("clock"); }
    void timeFormatChanged() override { note("format"); }

    std::vector<std::string> heard;
    std::function<void()> whenTold = [] {};

private:
    void note(const std::string& notice) {
        heard.push_back(notice);
        whenTold();
    }
};

/// What every implementation of SystemChangeNotices keeps to. A subclass gives the notices, and
/// ways to bring each about, which return when it has been told. The zone is Berlin's at first.
class SystemChangesContract {
public:
    SystemChangesContract() = default;
    SystemChangesContract(const SystemChangesContract&) = delete;
    SystemChangesContract& operator=(const SystemChangesContract&) = delete;
    virtual ~SystemChangesContract() = default;

    virtual SystemChangeNotices& notices() = 0;
    virtual void moveTo(const std::string& zoneName) = 0;
    virtual void setClock() = 0;
    virtual void changeLocale() = 0;

    void tellsInOrderWhileObserved() {
        SystemChangeJournal journal;
        moveTo("Asia/Tokyo");
        Handle handle = notices().observe(journal);
        moveTo("Europe/London");
        setClock();
        moveTo("Asia/Tokyo");
        changeLocale();
        handle.reset();
        setClock();
        EXPECT_THAT(journal.heard, testing::ElementsAre("from Asia/Tokyo", "clock",
                                                        "from Europe/London", "format"));
    }

    void letsTheObserverEndItsObservation() {
        SystemChangeJournal journal;
        Handle handle = notices().observe(journal);
        journal.whenTold = [&handle] { handle.reset(); };
        moveTo("Asia/Tokyo");
        setClock();
        EXPECT_THAT(journal.heard, testing::ElementsAre("from Europe/Berlin"));
    }
};

} // namespace plenzo
