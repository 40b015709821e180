// Prints what the system's notices say, a line each, until it is asked to end. The argument is the
// path of the link to the zone.
#include "linux/power_notices_of_system.h"
#include "linux/system_clock.h"
#include "linux/system_settings_watch.h"
#include "linux/termination_signals.h"

#include <sdbus-c++/sdbus-c++.h>

#include <QCoreApplication>
#include <cstdio>
#include <string>

using namespace plenzo;

namespace {

void print(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

class Printer final : public PowerObserver, public SystemChangeObserver {
public:
    explicit Printer(const RegionalSettings& settings) : m_settings(settings) {}

    void goingToSleep() override { print("going to sleep"); }
    void awakeFromSleep() override { print("awake from sleep"); }
    void shuttingDown() override { print("shutting down"); }
    void shutdownCanceled() override { print("shutdown canceled"); }
    void systemTimeZoneChanged(const TimeZone& previous) override {
        print("zone " + m_settings.timeZone().name() + " after " + previous.name());
    }
    void systemTimeChanged() override { print("clock"); }
    void timeFormatChanged() override { print("locale " + m_settings.locale()); }

private:
    const RegionalSettings& m_settings;
};

} // namespace

int main(int argumentCount, char** arguments) {
    QCoreApplication application(argumentCount, arguments);
    MainLoop loop;
    const SystemClock clock;
    AbsoluteTimers timers(loop, clock);
    RegionalSettingsOfSystem settings(argumentCount > 1 ? arguments[1] : "");
    BusOnMainLoop systemBus(loop, sdbus::createSystemBusConnection(), [] { print("bus lost"); });
    BusOnMainLoop sessionBus(loop, sdbus::createSessionBusConnection(), [] {});
    PowerNoticesOfSystem power(&systemBus, sessionBus, [&loop] { loop.quit(0); });
    SystemSettingsWatch changes(loop, &systemBus, timers, settings);
    Printer printer(settings);
    const Handle powerObservation = power.observe(printer);
    const Handle changeObservation = changes.observe(printer);
    const Handle termination =
        onTerminationRequest(loop, [&loop](TerminationRequest) { loop.quit(0); });
    print("ready");
    return loop.run();
}
