#include "linux/desktop_appearance.h"
#include "support/served_bus.h"

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Scheme = DesktopAppearance::ColorScheme;

const std::string space = "org.freedesktop.appearance";

/// The desktop's portal, as far as it tells the settings.
class PlayedPortal {
public:
    using Settings = std::map<std::string, sdbus::Variant>;

    PlayedPortal(ServedBus& bus, Settings settings)
        : m_service(bus, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"),
          m_settings(std::move(settings)) {
        m_service.object().registerMethod(interface, "Read", "ss", "v",
                                          [this](const sdbus::MethodCall& call) { read(call); });
        m_service.begin();
    }

    template <typename Number>
    void change(const std::string& setting, Number value, const std::string& inSpace = space) {
        m_service.send(interface, "SettingChanged", {}, inSpace, setting, sdbus::Variant(value));
    }
    void sendNonsense() {
        m_service.send(interface, "SettingChanged", {}, 1.0, true);
        m_service.send(interface, "SettingChanged", {});
    }

    int readCount = 0;

private:
    static constexpr const char* interface = "org.freedesktop.portal.Settings";

    void read(const sdbus::MethodCall& received) {
        sdbus::MethodCall call = received;
        std::string inSpace;
        std::string setting;
        call >> inSpace >> setting;
        ++readCount;
        const auto found = m_settings.find(setting);
        if (inSpace != space || found == m_settings.end()) {
            call.createErrorReply(sdbus::Error("org.freedesktop.portal.Error.NotFound", "no"))
                .send();
            return;
        }
        sdbus::MethodReply reply = call.createReply();
        // As the portal does, wrapped once more than needed.
        reply << sdbus::Variant(found->second);
        reply.send();
    }

    PlayedService m_service;
    Settings m_settings;
};

PlayedPortal::Settings settings(std::uint32_t scheme, std::uint32_t contrast) {
    return {{"color-scheme", sdbus::Variant(scheme)}, {"contrast", sdbus::Variant(contrast)}};
}

class TheDesktopsAppearance : public testing::Test {
protected:
    void startPortal(PlayedPortal::Settings of) {
        portal.emplace(bus, std::move(of));
        const int wanted = 2;
        bus.runUntil([&] { return portal->readCount == wanted; });
        settle();
    }
    /// What was sent before is read.
    void settle() { bus.roundTrip(*connection); }

    ServedBus bus;
    std::unique_ptr<BusOnMainLoop> connection = bus.connect();
    std::vector<DesktopAppearance> heard;
    std::optional<PlayedPortal> portal;
    std::optional<DesktopAppearanceWatch> watch;

    void startWatch() {
        watch.emplace(*connection, [this](const DesktopAppearance& now) { heard.push_back(now); });
        settle();
    }
};

TEST_F(TheDesktopsAppearance, IsAskedOfAPortalThatIsThereOrComesLater) {
    portal.emplace(bus, settings(1, 0));
    startWatch();
    bus.runUntil([this] { return !heard.empty(); });
    EXPECT_THAT(heard, ElementsAre(DesktopAppearance{Scheme::Dark, false}));

    heard.clear();
    portal.reset();
    watch.reset();
    startWatch();
    EXPECT_THAT(heard, IsEmpty()) << "nobody is there to ask";
    startPortal(settings(2, 1));
    bus.runUntil([this] { return heard.size() == 2; });
    EXPECT_THAT(heard, ElementsAre(DesktopAppearance{Scheme::Light, false},
                                   DesktopAppearance{Scheme::Light, true}));
}

TEST_F(TheDesktopsAppearance, IsFollowedAndToldOnlyWhenItIsAnother) {
    startWatch();
    startPortal(settings(0, 0));
    EXPECT_THAT(heard, IsEmpty()) << "no wish is what there was before";
    portal->change("color-scheme", std::uint32_t{1});
    portal->change("color-scheme", std::uint32_t{1});
    portal->change("color-scheme", std::uint32_t{2}, "org.other.space");
    portal->change("accent-color", std::uint32_t{1});
    portal->change("contrast", std::uint32_t{1});
    portal->change("color-scheme", std::uint32_t{77});
    settle();
    EXPECT_THAT(heard, ElementsAre(DesktopAppearance{Scheme::Dark, false},
                                   DesktopAppearance{Scheme::Dark, true},
                                   DesktopAppearance{Scheme::NoPreference, true}));
}

TEST_F(TheDesktopsAppearance, IsAskedAgainOfAPortalThatWasRestarted) {
    startWatch();
    startPortal(settings(1, 0));
    bus.runUntil([this] { return heard.size() == 1; });
    portal.reset();
    settle();
    EXPECT_EQ(heard.size(), 1U) << "it stays what it was meanwhile";
    startPortal(settings(2, 0));
    bus.runUntil([this] { return heard.size() == 2; });
    EXPECT_EQ(heard.back(), (DesktopAppearance{Scheme::Light, false}));
}

TEST_F(TheDesktopsAppearance, IsNotChangedByNonsense) {
    startWatch();
    startPortal({{"color-scheme", sdbus::Variant(std::string("dark"))},
                 {"contrast", sdbus::Variant(sdbus::Variant(1.0))}});
    portal->sendNonsense();
    portal->change("color-scheme", std::string("prefer-dark"));
    portal->change("contrast", -1);
    settle();
    EXPECT_THAT(heard, IsEmpty());
    portal->change("color-scheme", sdbus::Variant(sdbus::Variant(std::uint32_t{1})));
    settle();
    EXPECT_THAT(heard, ElementsAre(DesktopAppearance{Scheme::Dark, false}));
}

TEST_F(TheDesktopsAppearance, IsNotChangedByStrangers) {
    startWatch();
    startPortal(settings(0, 0));
    PlayedService stranger(bus, "org.test.Stranger", "/org/freedesktop/portal/desktop");
    stranger.send("org.freedesktop.portal.Settings", "SettingChanged",
                  connection->connection().getUniqueName(), space, std::string("color-scheme"),
                  sdbus::Variant(std::uint32_t{1}));
    settle();
    EXPECT_THAT(heard, IsEmpty());
}

} // namespace
} // namespace plenzo
