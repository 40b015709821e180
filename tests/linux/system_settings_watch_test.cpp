#include "linux/system_settings_watch.h"
#include "support/environment_variable.h"
#include "support/fake_clock.h"
#include "support/fake_system_change_notices.h"
#include "support/fake_wall_clock_timer.h"
#include "support/served_bus.h"
#include "support/system_changes_contract.h"
#include "support/temporary_folder.h"
#include "support/zone_link.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {
namespace {

class FakeSystemChangesUnderContract final : public SystemChangesContract {
public:
    SystemChangeNotices& notices() override { return m_notices; }
    void moveTo(const std::string& zoneName) override {
        const TimeZone previous = std::exchange(m_zone, TimeZone::named(zoneName).value());
        m_notices.changeTimeZoneFrom(previous);
    }
    void setClock() override { m_notices.changeTime(); }
    void changeLocale() override { m_notices.changeTimeFormat(); }

private:
    TimeZone m_zone = TimeZone::named("Europe/Berlin").value();
    FakeSystemChangeNotices m_notices;
};

/// Plays a service of the system's settings, whose interface has its name.
class PlayedSettingsService {
public:
    PlayedSettingsService(ServedBus& bus, std::string name, const std::string& path)
        : m_name(std::move(name)), m_service(bus, m_name, path) {
        m_service.begin();
    }

    template <typename PropertyType>
    void change(const std::string& property, const PropertyType& value) {
        const std::map<std::string, sdbus::Variant> changed{{property, sdbus::Variant(value)}};
        m_service.send(propertiesInterface, "PropertiesChanged", {}, m_name, changed,
                       std::vector<std::string>());
    }
    void sendNonsense() {
        m_service.send(propertiesInterface, "PropertiesChanged", {}, 1.0, std::string());
        m_service.send(propertiesInterface, "PropertiesChanged", {});
    }

private:
    static constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

    std::string m_name;
    PlayedService m_service;
};

/// A system in Berlin whose settings a test changes.
struct SystemOfTest {
    EnvironmentVariable noZone{"TZ", nullptr};
    EnvironmentVariable noLocale{"LC_ALL", nullptr};
    EnvironmentVariable timeLocale{"LC_TIME", "en_GB.UTF-8"};
    TemporaryFolder folder;
    ZoneLink link{folder.file("localtime"), "Europe/Berlin"};
    RegionalSettingsOfSystem settings{link.path()};
    ServedBus bus;
    FakeClock clock{Instant(800000000)};
    FakeWallClockTimer* timer = new FakeWallClockTimer;
    AbsoluteTimers timers{bus.loop(), clock, std::unique_ptr<WallClockTimer>(timer)};
    std::unique_ptr<BusOnMainLoop> connection = bus.connect();
    SystemSettingsWatch watch{bus.loop(), connection.get(), timers, settings};
    std::optional<PlayedSettingsService> timeService;
    std::optional<PlayedSettingsService> localeService;

    void startServices() {
        timeService.emplace(bus, "org.freedesktop.timedate1", "/org/freedesktop/timedate1");
        localeService.emplace(bus, "org.freedesktop.locale1", "/org/freedesktop/locale1");
    }
    void settle() { bus.roundTrip(*connection); }
    void moveTo(const std::string& zoneName) {
        link.replace(zoneName);
        bus.runUntil([this, &zoneName] { return settings.timeZone().name() == zoneName; });
    }
    void announceZone(const std::string& zoneName) {
        timeService->change("Timezone", zoneName);
        settle();
    }
    void announceLocale(const std::vector<std::string>& assignments) {
        localeService->change("Locale", assignments);
        settle();
    }
};

class SystemSettingsWatchUnderContract final : public SystemChangesContract {
public:
    SystemSettingsWatchUnderContract() { m_system.startServices(); }
    SystemChangeNotices& notices() override { return m_system.watch; }
    void moveTo(const std::string& zoneName) override { m_system.moveTo(zoneName); }
    void setClock() override {
        m_system.timer->becomeReadable(WallClockTimer::ClockState::WasSet);
        m_system.settle();
    }
    void changeLocale() override { m_system.announceLocale({"LANG=de_DE.UTF-8"}); }

private:
    SystemOfTest m_system;
};

template <typename Contract>
class EveryKindOfSystemChanges : public testing::Test {
protected:
    Contract contract;
};

using Kinds = testing::Types<FakeSystemChangesUnderContract, SystemSettingsWatchUnderContract>;
TYPED_TEST_SUITE(EveryKindOfSystemChanges, Kinds);

TYPED_TEST(EveryKindOfSystemChanges, TellsInOrderWhileObserved) {
    this->contract.tellsInOrderWhileObserved();
}

TYPED_TEST(EveryKindOfSystemChanges, LetsTheObserverEndItsObservation) {
    this->contract.letsTheObserverEndItsObservation();
}

class AChangedSystem : public testing::Test, protected SystemOfTest {
protected:
    SystemChangeJournal journal;
    Handle observation = watch.observe(journal);
};

TEST_F(AChangedSystem, IsToldOnceByItsLinkAndItsService) {
    startServices();
    announceZone("Asia/Tokyo");
    announceZone("Asia/Tokyo");
    link.replace("Asia/Tokyo");
    moveTo("Europe/London");
    announceZone("Europe/London");
    EXPECT_THAT(journal.heard, ElementsAre("from Europe/Berlin", "from Asia/Tokyo"));
}

TEST_F(AChangedSystem, HasItsNewSettingsWhenItIsTold) {
    startServices();
    journal.whenTold = [this] { EXPECT_EQ(settings.timeZone().name(), "Asia/Tokyo"); };
    announceZone("Asia/Tokyo");
    journal.whenTold = [this] { EXPECT_EQ(settings.locale(), "fr_FR"); };
    announceLocale({"LANG=de_DE.UTF-8", "LC_TIME=fr_FR.UTF-8"});
    EXPECT_THAT(journal.heard, ElementsAre("from Europe/Berlin", "format"));
}

TEST_F(AChangedSystem, IsToldByServicesThatComeAndGo) {
    startServices();
    announceZone("Asia/Tokyo");
    timeService.reset();
    localeService.reset();
    settle();
    EXPECT_THAT(journal.heard, ElementsAre("from Europe/Berlin"));
    startServices();
    announceZone("Europe/London");
    announceLocale({"LANG=de_DE.UTF-8"});
    EXPECT_THAT(journal.heard, ElementsAre("from Europe/Berlin", "from Asia/Tokyo", "format"));
}

TEST_F(AChangedSystem, IsNotToldByNonsense) {
    startServices();
    timeService->sendNonsense();
    localeService->sendNonsense();
    timeService->change("Timezone", 42.0);
    timeService->change("Timezone", std::string("Nowhere/Nothing"));
    timeService->change("NTP", true);
    localeService->change("Locale", std::string("LANG=de_DE.UTF-8"));
    localeService->change("Locale", std::vector<std::string>{"LANG=\x01", "", "="});
    settle();
    EXPECT_THAT(journal.heard, IsEmpty());
    announceZone("Asia/Tokyo");
    announceLocale({"LANG=de_DE.UTF-8"});
    EXPECT_THAT(journal.heard, ElementsAre("from Europe/Berlin", "format"));
}

TEST_F(AChangedSystem, IsNotToldByStrangers) {
    PlayedService stranger(bus, "org.test.Stranger", "/org/freedesktop/timedate1");
    const std::map<std::string, sdbus::Variant> changed{
        {"Timezone", sdbus::Variant(std::string("Asia/Tokyo"))}};
    stranger.send("org.freedesktop.DBus.Properties", "PropertiesChanged",
                  connection->connection().getUniqueName(), "org.freedesktop.timedate1", changed,
                  std::vector<std::string>());
    settle();
    EXPECT_THAT(journal.heard, IsEmpty());
}

} // namespace
} // namespace plenzo
