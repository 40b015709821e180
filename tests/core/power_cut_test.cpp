#include "core/saved_agents.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace plenzo {
namespace {

using testing::UnorderedElementsAre;

using Names = std::set<std::string>;

class APowerCutWhileSaving : public testing::Test {
protected:
    /// Everything in it tells by its name which state it is of.
    Pushed state(const std::string& name) const {
        const Instant tomorrow = utc(2026, 3, 11, 12);
        const Dictionary child{{keys::uid, name}, {keys::colInt, 0x1E90FF}};
        return {.eventDicts = {eventAt(name, tomorrow), eventAt(name, tomorrow + 60)},
                .sourceNodes = {Dictionary{{keys::uid, name}, {keys::children, Array{child}}}},
                .weather = {{Key("city"), name}}};
    }
    Pushed withoutWeather(const std::string& name) const {
        Pushed pushed = state(name);
        pushed.weather = {};
        return pushed;
    }
    /// What an agent that is launched over the files has: "old old | old | old".
    static std::string restored(DesktopOfAgents& desktop) {
        desktop.files.restorePower();
        desktop.launchAgain();
        std::string text;
        for (const std::string& uid : desktop.pendingUIDs()) {
            text += uid + " ";
        }
        text += "|";
        for (const std::string& uid : DesktopOfAgents::uidsOf(desktop.agent->sourceListNodes())) {
            text += " " + uid;
        }
        const auto city = desktop.agent->weatherDict().stringForKey(Key("city"));
        return text + " | " + std::string(city.value_or("no weather"));
    }

    /// Cuts the power after every number of changes until the saving gets through. Gives all that
    /// was restored.
    template <typename Prepare>
    Names restoredAfterEveryCut(const Prepare& prepare, const Pushed& pushed) {
        Names outcomes;
        for (bool isWhole = false; !isWhole;) {
            DesktopOfAgents desktop;
            prepare(desktop);
            desktop.files.losePowerAfter(m_changes++);
            desktop.save(pushed);
            isWhole = desktop.files.hasPower();
            m_lastOutcome = restored(desktop);
            outcomes.insert(m_lastOutcome);
        }
        return outcomes;
    }
    Names restoredAfterEveryCutOver(const Pushed& earlier, const Pushed& pushed) {
        return restoredAfterEveryCut(
            [&earlier](DesktopOfAgents& desktop) { ASSERT_TRUE(desktop.save(earlier)); }, pushed);
    }

    int m_changes = 0;
    std::string m_lastOutcome;
};

constexpr const char* wholeOldState = "old old | old | old";
constexpr const char* wholeNewState = "new new | new | new";
constexpr const char* newStateWithoutWeather = "new new | new | no weather";
constexpr const char* nothing = "| | no weather";

TEST_F(APowerCutWhileSaving, ForTheFirstTimeLeavesAllOrNothing) {
    const auto outcomes = restoredAfterEveryCut([](DesktopOfAgents&) {}, state("new"));
    EXPECT_THAT(outcomes, UnorderedElementsAre(nothing, wholeNewState));
    EXPECT_EQ(m_lastOutcome, wholeNewState);
    EXPECT_GT(m_changes, 8) << "the saving was cut at all of its changes";
}

TEST_F(APowerCutWhileSaving, OverAnEarlierStateLeavesThatOrTheNewOne) {
    EXPECT_THAT(restoredAfterEveryCutOver(state("old"), state("new")),
                UnorderedElementsAre(wholeOldState, wholeNewState));
    EXPECT_EQ(m_lastOutcome, wholeNewState);
}

TEST_F(APowerCutWhileSaving, NeverMixesTheOldWeatherWithANewStateWithoutAny) {
    EXPECT_THAT(restoredAfterEveryCutOver(state("old"), withoutWeather("new")),
                UnorderedElementsAre(wholeOldState, newStateWithoutWeather));
    EXPECT_EQ(m_lastOutcome, newStateWithoutWeather);
}

TEST_F(APowerCutWhileSaving, GivesWeatherToAStateThatHadNone) {
    EXPECT_THAT(restoredAfterEveryCutOver(withoutWeather("old"), state("new")),
                UnorderedElementsAre("old old | old | no weather", wholeNewState));
}

TEST_F(APowerCutWhileSaving, NeverMixesTheOldMailWithANewStateWithoutAny) {
    const Dictionary reminder = relativeReminder("mail", 0, 2);
    Pushed old = state("old");
    old.mailAlarms = {Dictionary{{keys::fireDate, utc(2026, 3, 10, 11).date()},
                                 {keys::eventDict, Dictionary{{keys::uid, "mail"}}},
                                 {keys::reminderDict, reminder}}};
    Names outcomes;
    for (bool isWhole = false; !isWhole;) {
        DesktopOfAgents desktop;
        ASSERT_TRUE(desktop.save(old));
        desktop.files.losePowerAfter(m_changes++);
        desktop.save(state("new"));
        isWhole = desktop.files.hasPower();
        const std::string text = restored(desktop);
        outcomes.insert(text + " " + std::to_string(desktop.mailer.sent.size()));
    }
    EXPECT_THAT(outcomes, UnorderedElementsAre(std::string(wholeOldState) + " 1",
                                               std::string(wholeNewState) + " 0"));
}

/// The second cut comes while an agent takes up what the first one has left. What that agent had
/// read already is consumed, but the states stay apart.
TEST_F(APowerCutWhileSaving, FollowedByOneWhileLaunchingMixesNothing) {
    constexpr int mostChanges = 25;
    const auto mixes = [](const std::string& text) {
        return text.find("old") != std::string::npos && text.find("new") != std::string::npos;
    };
    Names outcomes;
    for (int first = 0; first < mostChanges; ++first) {
        for (int second = 0; second < mostChanges; ++second) {
            DesktopOfAgents desktop;
            ASSERT_TRUE(desktop.save(state("old")));
            desktop.files.losePowerAfter(first);
            desktop.save(withoutWeather("new"));
            desktop.files.losePowerAfter(second);
            desktop.launchAgain();
            outcomes.insert(restored(desktop));
        }
    }
    EXPECT_TRUE(outcomes.contains(wholeOldState));
    EXPECT_TRUE(outcomes.contains(newStateWithoutWeather));
    EXPECT_EQ(std::ranges::find_if(outcomes, mixes), outcomes.end())
        << testing::PrintToString(outcomes);
}

/// As long as the end of the session is near, each change is saved over what was saved before.
TEST_F(APowerCutWhileSaving, AgainAfterALateDeltaLeavesTheRecordsBeforeOrAfterIt) {
    Names outcomes;
    for (bool isWhole = false; !isWhole;) {
        DesktopOfAgents desktop;
        desktop.launch();
        desktop.push(state("old"));
        desktop.powerNotices.shutDown();
        desktop.files.losePowerAfter(m_changes++);
        desktop.agent->alarmsUpdated(
            {deletionNotice("old"), eventAt("new", desktop.clock.now() + 3600)}, true);
        isWhole = desktop.files.hasPower();
        outcomes.insert(restored(desktop));
    }
    EXPECT_THAT(outcomes, UnorderedElementsAre(wholeOldState, "new | old | old"));
}

} // namespace
} // namespace plenzo
