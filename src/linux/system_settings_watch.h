#pragma once

#include "linux/absolute_timers.h"
#include "linux/bus_service.h"
#include "linux/file_watch.h"
#include "linux/regional_settings_of_system.h"
#include "platform/observer_slot.h"
#include "platform/system_change_notices.h"

#include <memory>
#include <string>

namespace plenzo {

/// Watches what can change the system's zone, locale and clock: the link to the zone's data, the
/// services org.freedesktop.timedate1 and org.freedesktop.locale1, and the timers, which notice a
/// clock that was set. It keeps the regional settings up to date and tells of every change, once.
///
/// Of the two services only their announcements count: what they say when asked is older than what
/// the environment says.
class SystemSettingsWatch final : public SystemChangeNotices {
public:
    /// `systemBus` may be absent, and the services with it. Everything outlives this object.
    SystemSettingsWatch(MainLoop& loop, BusOnMainLoop* systemBus, AbsoluteTimers& timers,
                        RegionalSettingsOfSystem& settings);
    SystemSettingsWatch(const SystemSettingsWatch&) = delete;
    SystemSettingsWatch& operator=(const SystemSettingsWatch&) = delete;
    ~SystemSettingsWatch() override;

    [[nodiscard]] Handle observe(SystemChangeObserver& observer) override {
        return m_slot.observe(observer);
    }

private:
    void listenTo(BusOnMainLoop& systemBus);
    void localtimeChanged();
    void timeZoneAnnounced(sdbus::Message& signal);
    void localeAnnounced(sdbus::Message& signal);

    AbsoluteTimers& m_timers;
    RegionalSettingsOfSystem& m_settings;
    ObserverSlot<SystemChangeObserver> m_slot;
    FileWatch m_localtime;
    std::unique_ptr<BusService> m_timeService;
    std::unique_ptr<BusService> m_localeService;
};

} // namespace plenzo
