#include "alarm_panel_fixture.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TheKeysOfAnAlarmWindow : public AlarmPanelFixture, public testing::Test {
protected:
    TheKeysOfAnAlarmWindow() {
        keys.setUnitLetters({U'm', U'h', U'd', U'b'});
        add({"a", "b"});
    }

    bool press(char32_t character) { return keys.handleKeyDown({.character = character}); }
    bool pressWithCommand(char32_t character) {
        return keys.handleKeyDown({.character = character, .command = true});
    }
    bool typeIntoList(char32_t character, double seconds) {
        return keys.handleKeyInList({.character = character}, seconds);
    }
};

TEST_F(TheKeysOfAnAlarmWindow, SnoozeDismissAndComplete) {
    EXPECT_TRUE(pressWithCommand(U's'));
    EXPECT_TRUE(pressWithCommand(U'd'));
    EXPECT_THAT(commands(),
                ElementsAre(snooze("b", clock.now() + 300), "open quietly acknowledge/a-r"));
    controller.addDisplayAlarm(alarm("todo", {{keys::type, 1}}));
    controller.showAlarmWindowIfNecessary();
    EXPECT_TRUE(pressWithCommand(U'/'));
    EXPECT_THAT(commands(), ElementsAre("open quietly edit/todo/completed/YES",
                                        "open quietly acknowledge/todo-r"));
    EXPECT_FALSE(pressWithCommand(U'x'));
    EXPECT_FALSE(press(U's'));
}

TEST_F(TheKeysOfAnAlarmWindow, ClickTheDefaultButtonByReturnAndEnter) {
    EXPECT_TRUE(press(keycharacters::carriageReturn));
    EXPECT_THAT(commands(), ElementsAre(snooze("b", clock.now() + 300)));
    set(preferences::snoozeDefault, false);
    EXPECT_TRUE(press(keycharacters::enter));
    EXPECT_THAT(commands(), ElementsAre("open quietly acknowledge/a-r"));
}

TEST_F(TheKeysOfAnAlarmWindow, DealWithOneRowHoweverLongTheyAreHeld) {
    for (const char32_t character : {U's', U'd', U'/'}) {
        EXPECT_TRUE(
            keys.handleKeyDown({.character = character, .command = true, .isRepeated = true}));
    }
    for (const char32_t character : {keycharacters::carriageReturn, keycharacters::enter}) {
        EXPECT_TRUE(keys.handleKeyInList({.character = character, .isRepeated = true}, 1));
    }
    EXPECT_THAT(commands(), IsEmpty());
    EXPECT_TRUE(keys.handleKeyInList({.character = U'7', .isRepeated = true}, 1));
    EXPECT_EQ(panel.snooze.value, 7);
}

TEST_F(TheKeysOfAnAlarmWindow, CloseAndDeleteNothing) {
    EXPECT_TRUE(press(keycharacters::escape));
    EXPECT_TRUE(typeIntoList(keycharacters::backspace, 1));
    EXPECT_TRUE(typeIntoList(keycharacters::forwardDelete, 1));
    EXPECT_EQ(panel.beepCount, 3);
    EXPECT_TRUE(panel.visible);
    EXPECT_EQ(list.rows.size(), 2U);
    EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(TheKeysOfAnAlarmWindow, TypeTheAmountIntoTheListAndBeginAnewAfterAPause) {
    EXPECT_TRUE(typeIntoList(U'1', 100));
    EXPECT_TRUE(typeIntoList(U'5', 100.3));
    EXPECT_EQ(panel.snooze.value, 15);
    EXPECT_TRUE(typeIntoList(U'5', 100.8));
    EXPECT_EQ(panel.snooze.value, 5);
    EXPECT_FALSE(typeIntoList(U'x', 101));
}

TEST_F(TheKeysOfAnAlarmWindow, SelectAllInTheList) {
    EXPECT_TRUE(keys.handleKeyInList({.character = U'a', .command = true}, 1));
    EXPECT_THAT(list.selectedTitles(), ElementsAre("a", "b"));
    EXPECT_FALSE(keys.handleKeyInList({.character = U'5', .command = true}, 1));
}

TEST_F(TheKeysOfAnAlarmWindow, VetWhatGoesIntoTheAmount) {
    EXPECT_FALSE(keys.handleInsert(U"12"));
    EXPECT_FALSE(keys.handleInsert(U""));
    EXPECT_TRUE(keys.handleInsert(U"h"));
    EXPECT_EQ(panel.snooze, (SnoozeAmount{5, SnoozeUnits::Hours}));
    EXPECT_EQ(panel.beepCount, 0);
    for (const std::u32string_view text : {U"x", U"1x", U"-3", U"1.5", U"٣"}) {
        EXPECT_TRUE(keys.handleInsert(text));
    }
    EXPECT_EQ(panel.beepCount, 5);
    EXPECT_TRUE(keys.handleInsert(U"\r"));
    EXPECT_THAT(commands(), ElementsAre(snooze("b", clock.now() + 5 * 3600)));
}

TEST_F(TheKeysOfAnAlarmWindow, KnowNoLetterOfAUnitThatHasNone) {
    keys.setUnitLetters({U'm', 0, 0, 0});
    EXPECT_TRUE(keys.handleInsert(std::u32string_view(U"\0", 1)));
    EXPECT_EQ(panel.snooze.units, SnoozeUnits::Minutes);
    EXPECT_EQ(panel.beepCount, 1);
}

} // namespace
} // namespace plenzo
