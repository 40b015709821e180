#include "breakable_files.h"
#include "calendar_fixture.h"
#include "edit_fixture.h"
#include "host/commands/local_edits.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace plenzo {

namespace {

constexpr const char* now = "2026-03-12T09:00:00Z";

/// A calendar with one weekly event and its alarm at the start; the file is "/c.ics".
class LocalEditsOfACalendar : public testing::Test {
protected:
    const std::string text =
        fileAround("BEGIN:VEVENT\nUID:e\nDTSTART:20260312T100000Z\nRRULE:FREQ=WEEKLY;COUNT=2\n"
                   "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:PT0S\nEND:VALARM\nEND:VEVENT\n");
    const CalendarZone zone = editContext(now).systemZone;
    const ExpansionWindow window = windowFrom(now);

    /// What the user hears, with the edits.
    std::vector<std::string> firings() const { return firingsIn(edited(), window); }
    std::string edited() const { return edits.amended("/c.ics", text); }

    /// Of the alarm that goes off as the first one.
    void edit(const char* made, const char* until = nullptr) {
        const std::string current = edited();
        AlarmTarget target = alarmTarget(current, reminderUidsIn(current, window).front());
        edits.add({target, until == nullptr ? std::nullopt : std::optional(instant(until)),
                   instant(made)});
    }

    TemporaryFolder folder;
    BreakableFiles files;
    LocalEdits edits{files, folder.file("state/local-edits"), zone};
};

} // namespace

TEST_F(LocalEditsOfACalendar, SnoozeAndAcknowledgeWithoutTouchingTheFile) {
    const auto before = firings();
    ASSERT_EQ(before.size(), 2U);
    edit("2026-03-12T10:00:10Z", "2026-03-12T10:10:00Z");
    ASSERT_EQ(firings().size(), 2U);
    EXPECT_THAT(firings()[0], testing::EndsWith("at 2026-03-12T10:10"));
    EXPECT_EQ(firings()[1], before[1]);
    EXPECT_EQ(edited(), edited()); // and so the agent knows the alarm again
    EXPECT_NE(edits.version("/c.ics"), edits.version("/d.ics"));
    EXPECT_EQ(edits.amended("/d.ics", text), text);
}

TEST_F(LocalEditsOfACalendar, OutliveTheProgramAndWhatTheFileWas) {
    edit("2026-03-12T10:00:10Z", "2026-03-12T10:10:00Z");
    BreakableFiles disk;
    LocalEdits ofNextRun(disk, folder.file("state/local-edits"), zone);
    ofNextRun.load();
    EXPECT_EQ(ofNextRun.amended("/c.ics", text), edited());
    const std::string without = fileAround("");
    EXPECT_EQ(ofNextRun.amended("/c.ics", without), without);
    EXPECT_EQ(ofNextRun.amended("/c.ics", "damaged"), "damaged");
}

TEST_F(LocalEditsOfACalendar, GoWhenTheyAreOfNoUse) {
    edit("2026-03-12T10:00:10Z", "2026-03-13T10:00:00Z");
    AlarmTarget other;
    other.occurrence.path = "/d.ics";
    edits.add({other, std::nullopt, instant("2026-03-15T09:00:00Z")});
    EXPECT_NE(edited(), text);
    const std::size_t version = edits.version("/c.ics");
    edits.add({other, std::nullopt, instant("2026-03-15T11:00:00Z")});
    EXPECT_EQ(edited(), text);
    EXPECT_NE(edits.version("/c.ics"), version);
}

} // namespace plenzo
