// Every alarm of the sample calendars is dismissed and snoozed: all the others must go off as
// before.
#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/files/file_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace plenzo {

namespace {

constexpr std::size_t mostAlarmsOfFile = 25;

std::vector<std::string> sampleTexts() {
    std::vector<std::string> texts;
    for (const char* folder : {PLENZO_TEST_DATA "/calendars", PLENZO_TEST_DATA "/../../samples"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            texts.push_back(readFileText(entry.path()).text);
        }
    }
    return texts;
}

/// What the first has and the second has not.
std::vector<std::string> missing(const std::vector<std::string>& all,
                                 const std::vector<std::string>& found) {
    std::vector<std::string> result;
    std::set_difference(all.begin(), all.end(), found.begin(), found.end(),
                        std::back_inserter(result));
    return result;
}

/// A few of the alarms, evenly spread. Of an alarm that repeats only the first time: the later ones
/// mean those before them as well. What is long overdue went off before the day that is looked at.
std::vector<std::string> someUids(const std::string& text, const ExpansionWindow& window) {
    std::vector<std::string> uids = reminderUidsIn(text, window);
    std::erase_if(uids, [](const std::string& uid) {
        return uid.find("~r") != std::string::npos ||
               uid.find("~todo-20260305") != std::string::npos;
    });
    const std::size_t step = uids.size() / mostAlarmsOfFile + 1;
    std::vector<std::string> some;
    for (std::size_t index = 0; index < uids.size(); index += step) {
        some.push_back(uids[index]);
    }
    return some;
}

/// Without what went off more than a day ago: dismissing a later alarm may mean that as well.
std::vector<std::string> wantedFirings(const std::string& text, const ExpansionWindow& window) {
    std::vector<std::string> all = firingsIn(text, window);
    std::erase_if(all, [](const std::string& firing) {
        return firing.substr(firing.find(" at ") + 4) < "2026-03-09T07:00";
    });
    return all;
}

} // namespace

TEST(EveryAlarmOfTheSamples, CanBeDismissedAloneInAdvance) {
    const char* now = "2026-03-10T07:00:00Z";
    const auto window = windowFrom(now, 20);
    int edits = 0;
    for (const std::string& text : sampleTexts()) {
        const auto before = wantedFirings(text, window);
        for (const std::string& uid : someUids(text, window)) {
            const EditResult result =
                acknowledgeAlarm(text, alarmTarget(text, uid), editContext(now));
            ASSERT_EQ(result.error, "") << uid;
            const auto after = wantedFirings(result.text, window);
            EXPECT_EQ(missing(before, after).size(), 1U)
                << uid << testing::PrintToString(missing(before, after));
            EXPECT_EQ(missing(after, before).size(), 0U) << uid;
            ++edits;
        }
    }
    EXPECT_GT(edits, 20);
}

TEST(EveryAlarmOfTheSamples, CanBeSnoozedAlone) {
    const char* now = "2026-03-10T07:00:00Z";
    const auto window = windowFrom(now, 20);
    int edits = 0;
    for (const std::string& text : sampleTexts()) {
        const auto before = wantedFirings(text, window);
        for (const std::string& uid : someUids(text, window)) {
            const EditResult result = snoozeAlarm(
                text, alarmTarget(text, uid), instant("2026-03-11T03:33:00Z"), editContext(now));
            ASSERT_EQ(result.error, "") << uid;
            const auto after = wantedFirings(result.text, window);
            const auto added = missing(after, before);
            EXPECT_EQ(missing(before, after).size(), 1U)
                << uid << testing::PrintToString(missing(before, after));
            ASSERT_EQ(added.size(), 1U) << uid;
            EXPECT_TRUE(added[0].ends_with("at 2026-03-11T03:33")) << uid << added[0];
            ++edits;
        }
    }
    EXPECT_GT(edits, 20);
}

} // namespace plenzo
