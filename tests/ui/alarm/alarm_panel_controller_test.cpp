#include "alarm_panel_fixture.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnAlarmWindow : public AlarmPanelFixture, public testing::Test {};

TEST_F(AnAlarmWindow, ListsWhatFiredWithTheNewestSelectedAndVisible) {
    add({"a", "b", "c"});
    EXPECT_TRUE(panel.visible);
    EXPECT_THAT(list.titles(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("c"));
    EXPECT_EQ(panel.visibleRowCount, 3U);
    EXPECT_EQ(panel.scope, ButtonScope::Selection);

    add({"d", "e", "f", "g"});
    EXPECT_EQ(panel.visibleRowCount, 5U);
    EXPECT_EQ(list.scrolledTo, 6U);
    EXPECT_EQ(panel.showCount, 1);
}

TEST_F(AnAlarmWindow, StaysAwayWhileThereIsNothingToShow) {
    controller.showAlarmWindowIfNecessary();
    EXPECT_FALSE(panel.visible);
}

TEST_F(AnAlarmWindow, ShowsWhatARecordSaysAndMarksTheLastRow) {
    controller.addDisplayAlarm(alarm("a", {{keys::location, "Room 4"},
                                           {keys::notes, "Bring the plans"},
                                           {keys::cal, "Work"},
                                           {keys::color, Value(Color{1, 2, 3, 255})}}));
    controller.addDisplayAlarm(alarm("b", {{keys::notes, "Bring the plans"},
                                           {keys::type, 1},
                                           {keys::completed, true},
                                           {keys::read, true}}));
    const AlarmRow& first = list.rows[0];
    EXPECT_EQ(first.location, "Room 4");
    EXPECT_EQ(first.calendar, "Work");
    EXPECT_EQ(first.color, (Color{1, 2, 3, 255}));
    EXPECT_FALSE(first.isToDo || first.done || first.readOnly || first.lastRow);
    const AlarmRow& second = list.rows[1];
    EXPECT_EQ(second.location, "Bring the plans");
    EXPECT_TRUE(second.isToDo && second.done && second.readOnly && second.lastRow);
}

TEST_F(AnAlarmWindow, ShowsAMissingTitleAsMissing) {
    Alarm untitled = alarm("a");
    untitled.eventDict = std::make_shared<Dictionary>(Dictionary{{keys::uid, "a"}});
    controller.addDisplayAlarm(untitled);
    EXPECT_EQ(list.rows[0].title, "(null)");
    EXPECT_EQ(list.rows[0].location, "");
    EXPECT_NE(list.rows[0].date, "") << "without a start, the alarm's own date";
}

TEST_F(AnAlarmWindow, SpeaksOfTodayAsTheDaysGoBy) {
    controller.addDisplayAlarm(
        alarm("day", {{keys::allDay, true}, {keys::date, utc(2026, 3, 11, 12).date()}}));
    controller.addDisplayAlarm(alarm("time", {{keys::date, utc(2026, 3, 11, 8).date()}}));
    EXPECT_EQ(list.rows[0].date, "Tomorrow");
    EXPECT_THAT(list.rows[1].date, testing::StartsWith("Tomorrow at 9:00"));
    clock.set(utc(2026, 3, 10, 23, 0, 2));
    controller.midnightRefresh();
    EXPECT_EQ(list.rows[0].date, "Today");
    EXPECT_THAT(list.rows[1].date, testing::StartsWith("Today at 9:00"));
}

TEST_F(AnAlarmWindow, SnoozesTheSelectionToOneMoment) {
    add({"a", "b", "c"});
    list.selection = {0, 2};
    controller.snoozeButton();
    EXPECT_THAT(commands(),
                ElementsAre(snooze("a", clock.now() + 300), snooze("c", clock.now() + 300)));
    EXPECT_THAT(list.titles(), ElementsAre("b"));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("b"));
}

TEST_F(AnAlarmWindow, SnoozesEachToItsOwnStartWithoutAnAmount) {
    controller.addDisplayAlarm(alarm("soon"));
    controller.addDisplayAlarm(alarm("later", {{keys::date, utc(2026, 3, 12).date()}}));
    controller.showAlarmWindowIfNecessary();
    list.selectAllRows();
    controller.setSnoozeValue(0);
    controller.snoozeButton();
    EXPECT_THAT(commands(), ElementsAre(snooze("soon", start), snooze("later", utc(2026, 3, 12))));
}

TEST_F(AnAlarmWindow, SnoozesUntilBeforeTheStart) {
    add({"a"});
    controller.setSnoozeValue(10);
    controller.setSnoozeUnits(SnoozeUnits::MinutesBeforeStart);
    controller.snoozeButton();
    EXPECT_THAT(commands(), ElementsAre(snooze("a", start - 600)));
    EXPECT_FALSE(panel.visible);
}

TEST_F(AnAlarmWindow, ActsOnAllRowsWhileAModifierIsHeld) {
    add({"a", "b"});
    controller.setAllModifierDown(true);
    EXPECT_EQ(panel.scope, ButtonScope::All);
    controller.dismissButton();
    EXPECT_THAT(commands(),
                ElementsAre("open quietly acknowledge/a-r", "open quietly acknowledge/b-r"));
    EXPECT_FALSE(panel.visible);

    add({"c"});
    EXPECT_EQ(panel.scope, ButtonScope::Selection) << "a window that appears begins anew";
}

TEST_F(AnAlarmWindow, SelectsTheNeighbourOfWhatWasDismissed) {
    add({"a", "b", "c", "d"});
    list.selection = {1};
    controller.dismissButton();
    EXPECT_THAT(list.selectedTitles(), ElementsAre("c"));
    list.selection = {2};
    controller.dismissButton();
    EXPECT_THAT(list.selectedTitles(), ElementsAre("c"));
    EXPECT_TRUE(list.rows.back().lastRow);
}

TEST_F(AnAlarmWindow, KeepsTheSelectionOnWhatItWasOnWhenTheHostTakesOtherRows) {
    add({"a", "b", "c", "d"});
    list.selection = {1, 2};
    controller.removeDisplayAlarm(rowOf(0));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("b", "c"));
    controller.removeDisplayAlarm(rowOf(0));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("c"));
    controller.removeDisplayAlarm(rowOf(0));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("d"));
    controller.removeDisplayAlarm(12345);
    controller.removeDisplayAlarm(rowOf(0));
    EXPECT_FALSE(panel.visible);
    EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(AnAlarmWindow, CompletesATodoByItsCheckBox) {
    controller.addDisplayAlarm(alarm("todo", {{keys::type, 1}}));
    const EventDict record = controller.displayedAlarms()[0].alarm.eventDict;
    add({"event"});
    controller.todoCheckbox(0, true);
    EXPECT_THAT(commands(), ElementsAre("open quietly edit/todo/completed/YES",
                                        "open quietly acknowledge/todo-r"));
    EXPECT_FALSE(record->contains(keys::completed)) << "the host's record is not ours to change";
    EXPECT_THAT(list.selectedTitles(), ElementsAre("event"));
    controller.todoCheckbox(7, true);
    EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(AnAlarmWindow, CompletesTheSelectedTodosAlike) {
    controller.addDisplayAlarm(alarm("done", {{keys::type, 1}, {keys::completed, true}}));
    controller.addDisplayAlarm(alarm("fixed", {{keys::type, 1}, {keys::read, true}}));
    controller.addDisplayAlarm(alarm("open", {{keys::type, 1}}));
    add({"event"});
    controller.toggleSelectedTodos();
    EXPECT_THAT(commands(), ElementsAre("open quietly acknowledge/event-r"));
    list.selectAllRows();
    controller.toggleSelectedTodos();
    EXPECT_THAT(commands(),
                ElementsAre("open quietly edit/done/completed/NO",
                            "open quietly edit/open/completed/NO",
                            "open quietly acknowledge/done-r", "open quietly acknowledge/fixed-r",
                            "open quietly acknowledge/open-r"));
    EXPECT_FALSE(panel.visible);
}

TEST_F(AnAlarmWindow, ShowsTheEventOfARow) {
    add({"a", "b"});
    controller.showSelectedEvent();
    controller.showEvent(0, HostCommands::InfoPanel::Hide);
    controller.showEvent(2, HostCommands::InfoPanel::Hide);
    EXPECT_THAT(commands(), ElementsAre("open info/b", "open show/a"));
    EXPECT_EQ(list.rows.size(), 2U);
}

TEST_F(AnAlarmWindow, DismissesWhatIsLeftWhenTheUserClosesIt) {
    struct Delegate final : AlarmWindowControllerDelegate {
        void alarmWindowClosed() override { ++count; }
        int count = 0;
    } delegate;
    controller.setDelegate(&delegate);
    add({"a", "b"});
    controller.windowWillClose();
    EXPECT_THAT(commands(),
                ElementsAre("open quietly acknowledge/a-r", "open quietly acknowledge/b-r"));
    EXPECT_THAT(controller.displayedAlarms(), IsEmpty());
    EXPECT_EQ(delegate.count, 1);
}

TEST_F(AnAlarmWindow, TakesTheKeyboardOnlyWhenToldToAndOnlyAfterAWhile) {
    add({"a"});
    timers.advanceTo(clock.now() + 10);
    EXPECT_EQ(panel.focusCount, 0);
    controller.dismissButton();

    set(preferences::takeFocus, true);
    add({"b"});
    timers.advanceTo(clock.now() + 3.1);
    EXPECT_EQ(panel.focusCount, 0);
    timers.advanceTo(clock.now() + 0.1);
    EXPECT_EQ(panel.focusCount, 1);
    controller.dismissButton();

    add({"c"});
    controller.dismissButton();
    EXPECT_EQ(timers.pendingCount(), 0U) << "a window that is gone takes nothing";
}

TEST_F(AnAlarmWindow, ComesBackWhenItWasMinimizedInTheMomentOfAnAlarm) {
    add({"a"});
    panel.visible = false;
    timers.advanceTo(clock.now() + 1);
    EXPECT_TRUE(panel.visible);
    panel.visible = false;
    timers.advanceTo(clock.now() + 60);
    EXPECT_FALSE(panel.visible) << "who minimizes it later wants it so";
    add({"b"});
    EXPECT_TRUE(panel.visible);
}

TEST_F(AnAlarmWindow, OffersReturnToTheButtonOfTheSettingsWhileItHasTheKeyboard) {
    add({"a"});
    controller.windowDidBecomeKey();
    EXPECT_EQ(panel.defaultButton, DefaultButton::Snooze);
    controller.setAllModifierDown(true);
    controller.windowDidResignKey();
    EXPECT_EQ(panel.defaultButton, DefaultButton::None);
    EXPECT_EQ(panel.scope, ButtonScope::Selection);
    set(preferences::snoozeDefault, false);
    EXPECT_EQ(panel.defaultButton, DefaultButton::None);
    controller.windowDidBecomeKey();
    EXPECT_EQ(panel.defaultButton, DefaultButton::Dismiss);
    set(preferences::snoozeDefault, true);
    EXPECT_EQ(panel.defaultButton, DefaultButton::Snooze) << "the settings may change meanwhile";
}

TEST_F(AnAlarmWindow, ReadsTheSnoozeAnewWhenItAppearsOrTheSettingsChange) {
    add({"a"});
    controller.setSnoozeValue(42);
    add({"b"});
    EXPECT_EQ(panel.snooze, (SnoozeAmount{42, SnoozeUnits::Minutes}));
    set(preferences::snoozeSeconds, 7200);
    EXPECT_EQ(panel.snooze, (SnoozeAmount{2, SnoozeUnits::Hours}));
    controller.setSnoozeValue(std::nullopt);
    EXPECT_EQ(panel.snooze, (SnoozeAmount{0, SnoozeUnits::Hours}));
}

} // namespace
} // namespace plenzo
