#include "linux/system_settings_watch.h"

#include <sdbus-c++/sdbus-c++.h>

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

constexpr const char* timeServiceName = "org.freedesktop.timedate1";
constexpr const char* localeServiceName = "org.freedesktop.locale1";

/// The new value of a service's property, from its signal PropertiesChanged. The service's
/// interface has its name. Nothing when something else has changed.
std::optional<sdbus::Variant> changedProperty(sdbus::Message& signal, const std::string& interface,
                                              const std::string& property) {
    std::string changedInterface;
    std::map<std::string, sdbus::Variant> changed;
    signal >> changedInterface >> changed;
    const auto value = changed.find(property);
    const bool isChanged = changedInterface == interface && value != changed.end();
    return isChanged ? std::optional(value->second) : std::nullopt;
}

/// Nothing happens when such a service comes or goes.
std::unique_ptr<BusService> watchedService(BusOnMainLoop& bus, const char* name,
                                           BusService::SignalHandler propertiesChanged) {
    const auto nothing = [] {};
    auto service = std::make_unique<BusService>(bus, name, nothing, nothing);
    service->onSignal("org.freedesktop.DBus.Properties", "PropertiesChanged",
                      std::move(propertiesChanged));
    return service;
}

} // namespace

SystemSettingsWatch::SystemSettingsWatch(MainLoop& loop, BusOnMainLoop* systemBus,
                                         AbsoluteTimers& timers, RegionalSettingsOfSystem& settings)
    : m_timers(timers), m_settings(settings),
      m_localtime(loop, settings.localtimePath(), [this] { localtimeChanged(); }) {
    m_timers.setClockChanged([this] { m_slot.tell(&SystemChangeObserver::systemTimeChanged); });
    if (systemBus != nullptr) {
        listenTo(*systemBus);
    }
}

SystemSettingsWatch::~SystemSettingsWatch() {
    m_timers.setClockChanged([] {});
}

void SystemSettingsWatch::listenTo(BusOnMainLoop& systemBus) {
    m_timeService = watchedService(systemBus, timeServiceName,
                                   [this](sdbus::Message& signal) { timeZoneAnnounced(signal); });
    m_localeService = watchedService(systemBus, localeServiceName,
                                     [this](sdbus::Message& signal) { localeAnnounced(signal); });
}

void SystemSettingsWatch::localtimeChanged() {
    const TimeZone previous = m_settings.timeZone();
    if (m_settings.readLocaltimeAgain()) {
        m_slot.tell(&SystemChangeObserver::systemTimeZoneChanged, previous);
    }
}

void SystemSettingsWatch::timeZoneAnnounced(sdbus::Message& signal) {
    const auto name = changedProperty(signal, timeServiceName, "Timezone");
    const TimeZone previous = m_settings.timeZone();
    if (name && m_settings.setTimeZoneName(name->get<std::string>())) {
        m_slot.tell(&SystemChangeObserver::systemTimeZoneChanged, previous);
    }
}

void SystemSettingsWatch::localeAnnounced(sdbus::Message& signal) {
    const auto assignments = changedProperty(signal, localeServiceName, "Locale");
    if (assignments && m_settings.setSystemLocale(assignments->get<std::vector<std::string>>())) {
        m_slot.tell(&SystemChangeObserver::timeFormatChanged);
    }
}

} // namespace plenzo
