#include "alarm_window_fixture.h"
#include "ui/alarm/alarm_cell_view.h"
#include "ui/alarm/alarm_tool_tip.h"
#include "ui/controls/elided_label.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace plenzo {
namespace {

constexpr int rowHeight = 64;
const Color red{255, 0, 0, 255};

/// Where the parts of a cell lie.
std::vector<QRect> frames(const AlarmCellView& cell) {
    std::vector<QRect> frames;
    for (const char* name : {"title", "date", "location", "infoButton"}) {
        frames.push_back(cell.findChild<QWidget*>(name)->geometry());
    }
    return frames;
}

class AReusedAlarmCell : public AlarmWindowFixture, public testing::Test {
protected:
    AReusedAlarmCell() {
        cell.reset(static_cast<AlarmCellView*>(files.load("EventCellView").release()));
        cell->awakeFromNib();
    }

    std::vector<QRect> shown(const std::string& title, const std::string& location,
                             const std::string& date = "Today") {
        AlarmRow row;
        row.title = title;
        row.location = location;
        row.date = date;
        cell->showRow(row, {.background = Qt::white, .text = Qt::black}, AlarmCellPart::None);
        return frames(*cell);
    }

    std::unique_ptr<AlarmCellView> cell;
};

TEST_F(AReusedAlarmCell, IsLaidOutAnewWhenItShowsAnotherRow) {
    const auto with = shown("a", "Room 4");
    const auto without = shown("a", "");
    EXPECT_TRUE(cell->locationField().isHidden());
    EXPECT_EQ(without[0].y() - with[0].y(), 6) << "0.35 of the location's height";
    EXPECT_EQ(without, shown("b", ""));
    EXPECT_EQ(with, shown("a", "Room 4"));
    EXPECT_FALSE(cell->locationField().isHidden());
}

TEST_F(AReusedAlarmCell, GivesALongDateItsRoomAtTheExpenseOfTheTitle) {
    const auto usual = shown("a", "Room 4");
    const auto wide = shown("a", "Room 4", "Wednesday, September 30, 2026 at 11:30 AM");
    EXPECT_EQ(wide[1].right(), usual[1].right());
    EXPECT_GT(wide[1].width(), usual[1].width());
    EXPECT_EQ(usual[0].right() - wide[0].right(), wide[1].width() - usual[1].width());
    shown(std::string(300, 'm'), "", "Today");
    EXPECT_TRUE(cell->isTitleElided());
}

class TheListOfAlarms : public AlarmWindowFixture, public testing::Test {
protected:
    /// The colour of a point of a row, as it is painted.
    [[nodiscard]] QColor pixel(int row, const QPoint& point) const {
        return list().grab().toImage().pixelColor(point.x(), row * rowHeight + point.y());
    }
    [[nodiscard]] QString toolTipAt(const QPoint& point) {
        QHelpEvent event(QEvent::ToolTip, point, list().viewport()->mapToGlobal(point));
        QApplication::sendEvent(list().viewport(), &event);
        return QToolTip::text();
    }
};

TEST_F(TheListOfAlarms, IsMirroredForThoseWhoReadFromTheRight) {
    for (const char* language : {"en", "ar"}) {
        AlarmWindowFixture window(language);
        window.controller().addDisplayAlarm(window.alarm("a", {{keys::color, Value(red)}}));
        window.add({"b"});
        const QImage image = window.list().grab().toImage();
        const int bar = 15;
        const int atLeft = bar;
        const int atRight = window.list().width() - 1 - bar;
        const bool isMirrored = std::string(language) == "ar";
        EXPECT_EQ(image.pixelColor(isMirrored ? atRight : atLeft, 32), QColor(Qt::red)) << language;
        EXPECT_NE(image.pixelColor(isMirrored ? atLeft : atRight, 32), QColor(Qt::red)) << language;
    }
}

TEST_F(TheListOfAlarms, PaintsTheSelectionInItsCalendarsColorAndFadesItWithoutTheKeyboard) {
    controller().addDisplayAlarm(alarm("a", {{keys::color, Value(red)}}));
    controller().showAlarmWindowIfNecessary();
    const QPoint corner(3, 3);
    const QColor faded = pixel(0, corner);
    EXPECT_EQ(faded.red(), 255);
    EXPECT_NEAR(faded.green(), 178, 1);
    activate();
    list().setFocus();
    EXPECT_EQ(pixel(0, corner), QColor(Qt::red));
}

TEST_F(TheListOfAlarms, ShowsWhatIsCutOffAndTheCalendarWhileTheMouseRests) {
    const std::string longTitle = "Tea & <b>cake</b> " + std::string(200, 'm');
    controller().addDisplayAlarm(alarm("short", {{keys::cal, "Work & home"}}));
    controller().addDisplayAlarm(alarm(longTitle));
    controller().addDisplayAlarm(alarm("bare"));
    controller().showAlarmWindowIfNecessary();
    const auto plain = [](const QString& toolTip) {
        QTextDocument document;
        document.setHtml(toolTip);
        return document.toPlainText().toStdString();
    };
    EXPECT_EQ(plain(toolTipAt({60, 32})), "Work & home");
    EXPECT_EQ(plain(toolTipAt({60, 96})), longTitle);
    EXPECT_TRUE(Qt::mightBeRichText(toolTipAt({60, 96}))) << "or the markup would show";
    EXPECT_EQ(alarmToolTip({}, true), "");
}

TEST_F(TheListOfAlarms, CompletesOneToDoByADoubleClickAndShowsEventsByTheLeftButtonAlone) {
    const QPoint checkBox(24, 32);
    for (const char* title : {"a", "b", "c"}) {
        controller().addDisplayAlarm(alarm(title, {{keys::type, 1}}));
    }
    controller().showAlarmWindowIfNecessary();
    const auto doubleClick = [this](Qt::MouseButton button, const QPoint& point) {
        QTest::mouseClick(list().viewport(), button, {}, point);
        QTest::mouseDClick(list().viewport(), button, {}, point);
    };
    doubleClick(Qt::LeftButton, checkBox);
    EXPECT_EQ(list().alarms().rowCount({}), 2);
    workspace.opened.clear();
    doubleClick(Qt::RightButton, {200, 32});
    EXPECT_TRUE(workspace.opened.empty());
    doubleClick(Qt::LeftButton, {200, 32});
    EXPECT_EQ(workspace.opened.size(), 1U);
}

TEST_F(TheListOfAlarms, PaintsHostileTextsInNoTime) {
    const std::string million(1'000'000, 'x');
    const std::string arabic = "\u202e\u2067تذكير\u2028\n\n\t<img src='/dev/zero'>";
    std::string marks;
    for (int count = 0; count < 100'000; ++count) {
        marks += "e\u0301\u0301\u202e";
    }
    for (const std::string& text : {million, arabic, marks, std::string("\xff\xfe\x80")}) {
        controller().addDisplayAlarm(
            alarm(text, {{keys::location, text}, {keys::cal, text}, {keys::type, 1}}));
        controller().addDisplayAlarm(alarm("x", {{keys::title, text}, {keys::notes, text}}));
    }
    controller().showAlarmWindowIfNecessary();
    list().selectAllRows();
    for (std::size_t row = 0; row < 8; ++row) {
        list().scrollToRow(row);
        EXPECT_FALSE(list().grab().isNull());
        EXPECT_LE(toolTipAt({60, 32}).size(), 10'000);
    }
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&list());
    EXPECT_LE(accessible->child(0)->text(QAccessible::Name).size(), 10'000);
}

} // namespace
} // namespace plenzo
