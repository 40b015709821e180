#include "alarm_window_fixture.h"
#include "ui/controls/palettes.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QScrollBar>
#include <QTest>
#include <cmath>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const languages[] = {"en", "de", "fr", "es", "ja", "ar"};

class AShownAlarmWindow : public AlarmWindowFixture, public testing::Test {};

TEST_F(AShownAlarmWindow, IsAsHighAsItsRowsUpToFive) {
    add({"a"});
    const QRect alone = panel().geometry();
    EXPECT_EQ(list().height(), 64);
    const QScrollBar& scrollBar = *list().verticalScrollBar();
    add({"b", "c", "d", "e"});
    EXPECT_TRUE(await([&] {
        EXPECT_FALSE(scrollBar.isVisible()) << "the texts would move";
        return list().height() == 5 * 64;
    }));
    EXPECT_EQ(panel().geometry().topLeft(), alone.topLeft());
    EXPECT_EQ(panel().height(), alone.height() + 4 * 64);
    add({"f"});
    EXPECT_EQ(panel().height(), alone.height() + 4 * 64);
    EXPECT_THAT(list().selectedRows(), ElementsAre(5U));
    EXPECT_TRUE(await([&] { return scrollBar.isVisible(); }));
    EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(list().model()->index(5, 0))));
}

TEST_F(AShownAlarmWindow, HasItsAmountDefaultButtonAndTitlesByWhetherItHasTheKeyboard) {
    add({"a"});
    const auto isDefault = [](const QPushButton& button) {
        return button.property("isDefault").toBool();
    };
    EXPECT_FALSE(isDefault(snoozeButton()) || isDefault(dismissButton()));
    activate();
    EXPECT_TRUE(isDefault(snoozeButton()) && !isDefault(dismissButton()));
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().selectedText(), "5");
    QTest::keyPress(&field(), Qt::Key_Shift);
    deactivate();
    EXPECT_FALSE(isDefault(snoozeButton()) || isDefault(dismissButton()));
    EXPECT_EQ(snoozeButton().text(), "Snooze");
    EXPECT_FALSE(field().hasFocus());
    defaults.setValues(Dictionary{{Key(preferences::snoozeDefault), Value(false)}});
    activate();
    EXPECT_TRUE(!isDefault(snoozeButton()) && isDefault(dismissButton()));
}

TEST_F(AShownAlarmWindow, SpeaksOfAllWhileShiftOrAltIsHeld) {
    add({"a"});
    activate();
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Alt}) {
        QTest::keyPress(&field(), key);
        EXPECT_EQ(snoozeButton().text(), "Snooze All");
        EXPECT_EQ(dismissButton().toolTip(), "Dismiss All (Ctrl+Shift+D)");
        QTest::keyRelease(&field(), key,
                          key == Qt::Key_Shift ? Qt::ShiftModifier : Qt::AltModifier);
        EXPECT_EQ(dismissButton().text(), "Dismiss");
        EXPECT_EQ(snoozeButton().toolTip(), "Snooze (Ctrl+S)");
    }
    QTest::keyPress(&list(), Qt::Key_Shift);
    QTest::keyPress(&list(), Qt::Key_Alt, Qt::ShiftModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::ShiftModifier | Qt::AltModifier);
    QApplication::sendEvent(&list(), &release);
    EXPECT_EQ(snoozeButton().text(), "Snooze All") << "one of them is still held";
}

TEST_F(AShownAlarmWindow, LearnsOfAModifierThatWasReleasedElsewhere) {
    add({"a"});
    activate();
    QTest::keyPress(&field(), Qt::Key_Shift);
    QTest::mouseMove(list().viewport(), {50, 32});
    EXPECT_TRUE(await([&] { return snoozeButton().text() == "Snooze"; }));
    add({"b"});
    QTest::keyPress(&field(), Qt::Key_Shift);
    QTest::keyClick(&field(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(list().alarms().rowCount({}), 1) << "one, not all";
}

TEST_F(AShownAlarmWindow, ActsOnNothingThatWasNotSelectedWhenAButtonWasPressed) {
    add({"a"});
    QTest::mousePress(&dismissButton(), Qt::LeftButton);
    add({"b"});
    QTest::mouseRelease(&dismissButton(), Qt::LeftButton);
    EXPECT_EQ(list().alarms().rowCount({}), 2);
    QTest::mouseClick(&dismissButton(), Qt::LeftButton);
    EXPECT_EQ(list().alarms().rowCount({}), 1);
}

TEST_F(AShownAlarmWindow, IsDismissedByItsUserAndNotByTheEndOfTheSession) {
    add({"a"});
    panel().close();
    EXPECT_EQ(list().alarms().rowCount({}), 1) << "as the toolkit closes it";
    panel().show();
    QCloseEvent ofUser;
    QSpontaneKeyEvent::setSpontaneous(&ofUser);
    qApp->notify(&panel(), &ofUser);
    EXPECT_EQ(list().alarms().rowCount({}), 0);
}

TEST_F(AShownAlarmWindow, KnowsTheKeysOfACommandInEveryLayout) {
    constexpr quint32 placeOfD = 40;
    add({"a", "b"});
    activate();
    QKeyEvent typed(QEvent::KeyPress, 0x0412, Qt::NoModifier, placeOfD, 0, 0);
    QApplication::sendEvent(&list(), &typed);
    EXPECT_EQ(list().alarms().rowCount({}), 2);
    QKeyEvent command(QEvent::KeyPress, 0x0412, Qt::ControlModifier, placeOfD, 0, 0);
    QApplication::sendEvent(&list(), &command);
    EXPECT_EQ(list().alarms().rowCount({}), 1);
}

TEST_F(AShownAlarmWindow, TakesAnAmountInEveryWayOfTyping) {
    add({"a"});
    activate();
    QTest::keyClicks(&field(), "1x2");
    EXPECT_EQ(amount(), 12);
    field().clear();
    QTest::keyClicks(&field(), "3h");
    EXPECT_EQ(controller().snoozeAmount().units, SnoozeUnits::Hours);
    EXPECT_EQ(popup().currentIndex(), 1);
    EXPECT_EQ(field().text(), "3");
    QTest::keyClick(&field(), Qt::Key_Backspace);
    EXPECT_EQ(amount(), 0);
    EXPECT_EQ(field().text(), "0");
    field().setText("5");
    QTest::keyClick(&field(), Qt::Key_Home);
    QTest::keyClicks(&field(), "03");
    EXPECT_EQ(amount(), 35) << "before the 5";
    field().setText("0");
    QTest::keyClicks(&field(), "12345678901234567890");
    EXPECT_EQ(field().text(), "123456789") << "as many digits as there can be";
}

TEST_F(AShownAlarmWindow, TakesDigitsThatArePastedOrComposedAndNothingElse) {
    add({"a"});
    activate();
    const auto paste = [this](const char* text) {
        QGuiApplication::clipboard()->setText(text);
        field().selectAll();
        QTest::keyClick(&field(), Qt::Key_V, Qt::ControlModifier);
        return field().text().toStdString();
    };
    EXPECT_EQ(paste(" 42\n"), "42");
    EXPECT_EQ(paste("4 or 5"), "42");
    EXPECT_EQ(paste("-7"), "42");
    EXPECT_EQ(amount(), 42);
    const auto compose = [this](const char* text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&field(), &event);
        return field().text().toStdString();
    };
    field().selectAll();
    EXPECT_EQ(compose("8"), "8");
    EXPECT_EQ(compose("分"), "8");
    EXPECT_EQ(compose("d"), "8");
    EXPECT_EQ(controller().snoozeAmount().units, SnoozeUnits::Days);
}

TEST_F(AShownAlarmWindow, LetsAPopUpWithANegativeTagGrowToTheLeft) {
    add({"a"});
    const auto width = [this] {
        const double text = QFontMetricsF(popup().font()).horizontalAdvance(popup().currentText());
        return static_cast<int>(std::ceil(text)) + 36;
    };
    const QRect before = popup().geometry();
    EXPECT_EQ(before.width(), width());
    controller().setSnoozeUnits(SnoozeUnits::MinutesBeforeStart);
    EXPECT_EQ(popup().width(), width());
    EXPECT_GT(popup().width(), before.width());
    EXPECT_EQ(popup().x(), before.x());
    popup().setProperty("tag", -1);
    const int right = popup().geometry().right();
    controller().setSnoozeUnits(SnoozeUnits::Days);
    EXPECT_EQ(popup().width(), width());
    EXPECT_EQ(popup().geometry().right(), right);
}

TEST_F(AShownAlarmWindow, TakesTheColorsOfTheDesktopAsTheyChange) {
    add({"a"});
    const QString before = panel().styleSheet();
    const auto colorOfBar = [this] {
        return panel().grab().toImage().pixelColor(2, panel().height() - 3);
    };
    QApplication::setPalette(palette(Brightness::Dark, Contrast::Usual));
    EXPECT_TRUE(await([&] { return panel().styleSheet() != before; }));
    EXPECT_EQ(colorOfBar(), palette(Brightness::Dark, Contrast::Usual).window().color());
    QApplication::setPalette(palette(Brightness::Light, Contrast::Usual));
    EXPECT_TRUE(await([&] { return colorOfBar().lightness() > 200; }));
    EXPECT_THAT(panel().styleSheet().toStdString(), testing::HasSubstr("light/chevron.svg"));
    QApplication::setPalette(QPalette());
}

TEST_F(AShownAlarmWindow, TellsScreenReadersWhatItIsMadeOf) {
    controller().addDisplayAlarm(alarm("Tea", {{keys::location, "Room 4"}}));
    controller().showAlarmWindowIfNecessary();
    const auto described = [](QWidget& widget) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
        return std::pair(interface->text(QAccessible::Name).toStdString(), interface->role());
    };
    using testing::Pair;
    EXPECT_THAT(described(list()), Pair("Alarms", QAccessible::List));
    EXPECT_THAT(described(field()), Pair("Snooze amount", QAccessible::EditableText));
    EXPECT_THAT(described(popup()), Pair("minutes", QAccessible::ComboBox))
        << "as the toolkit has it";
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&popup())->text(QAccessible::Description),
              "Snooze units");
    EXPECT_THAT(described(snoozeButton()), Pair("Snooze", QAccessible::Button));
    EXPECT_THAT(described(dismissButton()), Pair("Dismiss", QAccessible::Button));
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(&list())->child(0);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_THAT(row->text(QAccessible::Name).toStdString(),
                testing::AllOf(testing::HasSubstr("Tea"), testing::HasSubstr("Room 4")));
}

/// The controls from the left to the right, or what overlaps.
std::vector<std::string> overlaps(const AlarmWindowFixture& window) {
    std::vector<const QWidget*> controls = {&window.field(), &window.popup(),
                                            &window.snoozeButton(), &window.dismissButton()};
    if (window.panel().layoutDirection() == Qt::RightToLeft) {
        std::ranges::reverse(controls);
    }
    std::vector<std::string> found;
    for (std::size_t index = 1; index < controls.size(); ++index) {
        if (controls[index]->x() <= controls[index - 1]->geometry().right()) {
            found.push_back(controls[index]->objectName().toStdString());
        }
    }
    return found;
}

TEST(AnAlarmWindowInEveryLanguage, HasRoomForItsControls) {
    for (const char* language : languages) {
        AlarmWindowFixture window(language);
        window.add({"a"});
        const bool isMirrored = window.panel().layoutDirection() == Qt::RightToLeft;
        const auto outerEdge = [&] {
            const QRect button = window.dismissButton().geometry();
            return isMirrored ? button.left() : button.right();
        };
        const auto gap = [&] {
            return isMirrored
                       ? window.snoozeButton().x() - window.dismissButton().geometry().right()
                       : window.dismissButton().x() - window.snoozeButton().geometry().right();
        };
        const int edge = outerEdge();
        const int designedGap = gap();
        for (const bool all : {false, true, false}) {
            window.controller().setAllModifierDown(all);
            for (int units = 0; units < snoozeUnitsCount; ++units) {
                window.controller().setSnoozeUnits(static_cast<SnoozeUnits>(units));
                EXPECT_THAT(overlaps(window), IsEmpty()) << language << all << units;
            }
            EXPECT_EQ(outerEdge(), edge) << language;
            EXPECT_EQ(gap(), designedGap) << language;
            EXPECT_EQ(window.snoozeButton().width(), window.dismissButton().width()) << language;
        }
        EXPECT_EQ(isMirrored, std::string(language) == "ar");
    }
}

} // namespace
} // namespace plenzo
