#include "ui/alarm/alarm_list_model.h"
#include "ui/alarm/snooze_popup.h"

#include <gmock/gmock.h>

#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::Pair;

class AnAlarmList : public testing::Test {
protected:
    AnAlarmList() {
        for (int number = 0; number < 8; ++number) {
            AlarmRow row;
            row.title = std::to_string(number);
            model.appendRow(row);
        }
        QObject::connect(
            &model, &QAbstractItemModel::rowsRemoved, &model,
            [this](const QModelIndex&, int first, int last) { removed.emplace_back(first, last); });
    }

    [[nodiscard]] std::string titles() const {
        std::string titles;
        for (int row = 0; row < model.rowCount(); ++row) {
            titles += model.data(model.index(row), Qt::DisplayRole).toString().toStdString();
        }
        return titles;
    }

    AlarmListModel model;
    std::vector<std::pair<int, int>> removed;
};

TEST_F(AnAlarmList, RemovesEveryStretchOfRowsAtOnce) {
    model.removeAlarms({0, 1, 2, 4, 6, 7});
    EXPECT_EQ(titles(), "35");
    EXPECT_THAT(removed, ElementsAre(Pair(6, 7), Pair(4, 4), Pair(0, 2)));
}

TEST_F(AnAlarmList, KnowsNoRowsThatAreNotThere) {
    model.removeAlarms({8, 100});
    model.updateRow(8, {});
    EXPECT_EQ(titles(), "01234567");
    EXPECT_FALSE(model.data(model.index(8), Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
}

TEST_F(AnAlarmList, TellsAScreenReaderAllThatARowShows) {
    AlarmRow row;
    row.title = "Dentist";
    row.date = "Tomorrow at 9:00";
    row.calendar = "Private";
    model.updateRow(3, row);
    EXPECT_EQ(model.data(model.index(3), Qt::AccessibleTextRole).toString().toStdString(),
              "Dentist, Tomorrow at 9:00, Private");
}

TEST(AMarkedText, NamesItsLetter) {
    const struct {
        const char* marked;
        const char* text;
        char32_t letter;
    } cases[]{
        {"&minutes", "minutes", U'm'},
        {"Minuten &Vor Beginn", "Minuten Vor Beginn", U'v'},
        {"分 (&M)", "分", U'm'},
        {"日(&D)", "日", U'd'},
        {"hours", "hours", 0},
        {"hours&", "hours&", 0},
        {"", "", 0},
    };
    for (const auto& [marked, text, letter] : cases) {
        const MarkedText result = markedText(QString::fromUtf8(marked));
        EXPECT_EQ(result.text.toStdString(), text);
        EXPECT_EQ(result.letter, letter) << marked;
    }
}

} // namespace
} // namespace plenzo
