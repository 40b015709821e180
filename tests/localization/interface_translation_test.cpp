#include "localization/interface_folder.h"
#include "localization/springs_and_struts.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <memory>
#include <string>

namespace plenzo {
namespace {

class Owner final : public InterfaceOwner {
public:
    [[nodiscard]] std::string nibNameForLocalizedNib() const override { return "Test"; }
};

/// An interface with tables in which "Go" is "Weitermachen".
class ATranslatedInterface : public testing::Test {
protected:
    ATranslatedInterface() {
        folder.write("en.lproj/Test.strings", "a = Go; b = Stop; c = Both;");
        folder.write("de.lproj/Test.strings", "a = Weitermachen; b = Halt; c = Both;");
    }
    void load(const std::string& widgets, const char* language = "de") {
        folder.writeWindow(widgets);
        window = InterfaceFiles(folder.path(), {language}).load("Test");
        ASSERT_NE(window, nullptr);
    }
    template <class Widget>
    Widget& view(const char* name) const {
        return *window->findChild<Widget*>(name);
    }
    [[nodiscard]] int widened(const QWidget& control) const {
        return width(control, "Weitermachen") - width(control, "Go");
    }
    /// In whole pixels, as a text needs them.
    [[nodiscard]] static int width(const QWidget& control, const char* text) {
        return QFontMetrics(control.font()).size(0, text).width();
    }

    InterfaceFolder folder;
    std::unique_ptr<QWidget> window;
};

std::string button(const char* name, const QRect& frame, const char* mask,
                   const std::string& more = {}) {
    return InterfaceFolder::widget("QPushButton", name, frame, mask,
                                   InterfaceFolder::text("text", "Go") + more);
}

TEST_F(ATranslatedInterface, HasAllKindsOfTextsTranslated) {
    using Folder = InterfaceFolder;
    const std::string go = Folder::text("text", "Go");
    const std::string item = "<item>" + go + "</item>";
    const std::string column = "<column>" + go + "</column>";
    const QRect frame(0, 0, 50, 20);
    load(Folder::text("windowTitle", "Go") + Folder::text("toolTip", "Stop") +
         Folder::widget("QLabel", "label", frame, "", go + Folder::text("accessibleName", "Go")) +
         Folder::widget("QCheckBox", "check", frame, "", go + Folder::text("toolTip", "Go")) +
         Folder::widget("QComboBox", "combo", frame, "", item + item) +
         Folder::widget("QLineEdit", "field", frame, "",
                        go + Folder::text("placeholderText", "Go")) +
         Folder::widget("QGroupBox", "box", frame, "",
                        Folder::text("title", "Go") +
                            Folder::widget("QLabel", "inner", frame, "", go)) +
         Folder::widget("QTableWidget", "table", frame, "", column + "<row>" + go + "</row>") +
         Folder::widget("QTreeWidget", "tree", frame, "", column) +
         Folder::widget("QTabWidget", "tabs", frame, "",
                        "<widget class=\"QWidget\" name=\"page\"><attribute name=\"title\"><string>"
                        "Go</string></attribute></widget>") +
         Folder::widget("QMenu", "menu", frame, "",
                        Folder::text("title", "Go") + "<addaction name=\"action\"/>") +
         "<action name=\"action\">" + go + Folder::text("statusTip", "Stop") + "</action>");
    const QString translated = "Weitermachen";
    EXPECT_EQ(window->windowTitle(), translated);
    EXPECT_EQ(window->toolTip(), "Halt");
    EXPECT_EQ(view<QLabel>("label").text(), translated);
    EXPECT_EQ(view<QLabel>("label").accessibleName(), translated);
    EXPECT_EQ(view<QCheckBox>("check").text(), translated);
    EXPECT_EQ(view<QCheckBox>("check").toolTip(), translated);
    EXPECT_EQ(view<QComboBox>("combo").itemText(1), translated);
    EXPECT_EQ(view<QLineEdit>("field").placeholderText(), translated);
    EXPECT_EQ(view<QLineEdit>("field").text(), "Go") << "a value is no text of the interface";
    EXPECT_EQ(view<QGroupBox>("box").title(), translated);
    EXPECT_EQ(view<QLabel>("inner").text(), translated);
    EXPECT_EQ(view<QTableWidget>("table").horizontalHeaderItem(0)->text(), translated);
    EXPECT_EQ(view<QTableWidget>("table").verticalHeaderItem(0)->text(), translated);
    EXPECT_EQ(view<QTreeWidget>("tree").headerItem()->text(0), translated);
    EXPECT_EQ(view<QTabWidget>("tabs").tabText(0), translated);
    EXPECT_EQ(view<QMenu>("menu").title(), translated);
    EXPECT_EQ(view<QAction>("action").text(), translated);
    EXPECT_EQ(view<QAction>("action").statusTip(), "Halt");
}

TEST_F(ATranslatedInterface, WidensAControlByItsTitleInItsOwnFont) {
    load(button("small", {10, 0, 60, 20}, "rightMargin") +
         button("large", {10, 30, 60, 20}, "rightMargin",
                R"(<property name="font"><font><pointsize>26</pointsize></font></property>)") +
         InterfaceFolder::widget("QLabel", "same", {10, 60, 60, 20}, "",
                                 InterfaceFolder::text("text", "Both")));
    const auto& small = view<QPushButton>("small");
    const auto& large = view<QPushButton>("large");
    EXPECT_GT(widened(small), 40);
    EXPECT_GT(widened(large), widened(small) + 40);
    EXPECT_EQ(small.width(), 60 + widened(small));
    EXPECT_EQ(large.width(), 60 + widened(large));
    EXPECT_EQ(view<QLabel>("same").width(), 60);
}

TEST_F(ATranslatedInterface, WidensAPopUpByItsWidestItem) {
    const auto item = [](const char* text) {
        return "<item>" + InterfaceFolder::text("text", text) + "</item>";
    };
    load(InterfaceFolder::widget("QComboBox", "combo", {10, 0, 60, 20}, "",
                                 item("Go") + item("Stop") + item("Unknown")));
    const auto& combo = view<QComboBox>("combo");
    EXPECT_EQ(combo.width(), 60 + width(combo, "Weitermachen") - width(combo, "Unknown"));
}

TEST_F(ATranslatedInterface, KeepsWhatItsTagsAndMasksSay) {
    load(button("never", {10, 0, 60, 20}, "rightMargin", InterfaceFolder::tag(100)) +
         button("inverted", {200, 30, 60, 20}, "rightMargin", InterfaceFolder::tag(99)) +
         button("flexible", {10, 60, 360, 20}, "width"));
    EXPECT_EQ(view<QPushButton>("never").text(), "Go");
    EXPECT_EQ(view<QPushButton>("never").width(), 60);
    const QRect inverted = view<QPushButton>("inverted").geometry();
    EXPECT_EQ(inverted.x(), 200 - widened(view<QPushButton>("inverted")));
    EXPECT_EQ(inverted.x() + inverted.width(), 260);
    EXPECT_EQ(view<QPushButton>("flexible").text(), "Weitermachen");
    EXPECT_EQ(view<QPushButton>("flexible").geometry(), QRect(10, 60, 360, 20));
}

TEST_F(ATranslatedInterface, IsTheDesignUntouchedInEnglish) {
    load(button("go", {10, 0, 7, 20}, "rightMargin") + button("cut", {10, 30, 9, 20}, "width"),
         "en");
    EXPECT_EQ(view<QPushButton>("go").text(), "Go");
    EXPECT_EQ(view<QPushButton>("go").geometry(), QRect(10, 0, 7, 20));
    EXPECT_EQ(view<QPushButton>("cut").geometry(), QRect(10, 30, 9, 20));
    EXPECT_EQ(window->size(), QSize(400, 100));
}

TEST_F(ATranslatedInterface, GrowsWithItsWindowsLimitsAndItsBoxes) {
    const std::string limits =
        "<property "
        "name=\"minimumSize\"><size><width>300</width><height>0</height></size></property>"
        "<property "
        "name=\"maximumSize\"><size><width>400</width><height>900</height></size></property>";
    load(limits +
         InterfaceFolder::widget("QFrame", "box", {20, 0, 360, 60}, "width",
                                 button("inner", {290, 10, 60, 20}, "rightMargin")) +
         button("go", {340, 70, 50, 20}, "leftMargin"));
    const int growth = widened(view<QPushButton>("inner"));
    EXPECT_EQ(window->width(), 400 + growth);
    EXPECT_EQ(window->minimumWidth(), 300 + growth);
    EXPECT_EQ(window->maximumWidth(), 400 + growth);
    EXPECT_EQ(view<QFrame>("box").width(), 360 + growth);
    EXPECT_EQ(view<QPushButton>("inner").geometry(), QRect(290, 10, 60 + growth, 20));
    EXPECT_EQ(view<QPushButton>("go").geometry().right() + 1, 390 + growth);
}

TEST_F(ATranslatedInterface, GrowsABoxOfFixedWidthLikeAControl) {
    load(InterfaceFolder::widget("QFrame", "box", {20, 0, 100, 60}, "rightMargin",
                                 button("inner", {30, 10, 60, 20}, "rightMargin")) +
         button("beside", {130, 70, 50, 20}, "rightMargin") +
         button("besideBox", {130, 20, 50, 20}, "rightMargin"));
    const int growth = widened(view<QPushButton>("inner"));
    EXPECT_EQ(view<QFrame>("box").width(), 100 + growth);
    EXPECT_EQ(view<QPushButton>("besideBox").x(), 130 + growth);
    EXPECT_EQ(view<QPushButton>("beside").x(), 130);
    EXPECT_EQ(window->width(), 400);
}

TEST_F(ATranslatedInterface, GrowsForTheTitlesOfBoxesAndTabs) {
    const std::string page = "<widget class=\"QWidget\" name=\"page\"><attribute name=\"title\">"
                             "<string>Go</string></attribute></widget>";
    load(InterfaceFolder::widget("QGroupBox", "box", {20, 0, 50, 40}, "rightMargin",
                                 InterfaceFolder::text("title", "Go")) +
         InterfaceFolder::widget("QTabWidget", "tabs", {20, 50, 50, 40}, "rightMargin", page) +
         InterfaceFolder::widget("QTabWidget", "wide", {90, 50, 300, 40}, "width", page));
    auto& tabs = view<QTabWidget>("tabs");
    EXPECT_EQ(tabs.width(), tabs.tabBar()->sizeHint().width());
    EXPECT_EQ(view<QGroupBox>("box").width(), view<QGroupBox>("box").minimumSizeHint().width());
    EXPECT_EQ(view<QTabWidget>("wide").width(), 300 - (tabs.width() - 50));
    EXPECT_EQ(window->width(), 400);

    load(InterfaceFolder::widget("QGroupBox", "box", {20, 0, 50, 40}, "width",
                                 InterfaceFolder::text("title", "Go")));
    EXPECT_EQ(window->width(), 400 + view<QGroupBox>("box").minimumSizeHint().width() - 50);
}

TEST_F(ATranslatedInterface, GrowsForThePopUpThatMayShowItsWidestItem) {
    load(InterfaceFolder::widget("QComboBox", "combo", {10, 0, 20, 20}, "rightMargin",
                                 "<item>" + InterfaceFolder::text("text", "Go") + "</item>") +
         button("go", {200, 0, 190, 20}, "leftMargin"));
    const auto& combo = view<QComboBox>("combo");
    EXPECT_EQ(combo.width(), 20 + widened(combo)) << "as it was designed, for less";
    const int left = 200 - widened(view<QPushButton>("go"));
    EXPECT_EQ(window->width(), 400 + 10 + combo.sizeHint().width() + 8 - left);
}

TEST_F(ATranslatedInterface, GivesRoomToTextsThatAreTheLanguagesAlready) {
    const auto loadedAs = [this](TranslationNeeded needed) {
        QByteArray bytes = QByteArray::fromStdString(InterfaceFolder::window(
            button("english", {10, 0, 60, 20}, "") +
            InterfaceFolder::widget("QPushButton", "german", {10, 30, 60, 20}, "",
                                    InterfaceFolder::text("text", "Weitermachen"))));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        Owner owner;
        window = InterfaceFiles(folder.path(), {"de"}).loadFrom(buffer, &owner, needed);
    };
    loadedAs(TranslationNeeded::No);
    EXPECT_EQ(view<QPushButton>("english").text(), "Go");
    EXPECT_EQ(view<QPushButton>("english").width(), 60);
    EXPECT_EQ(view<QPushButton>("german").width(), 60 + widened(view<QPushButton>("german")));
    loadedAs(TranslationNeeded::Yes);
    EXPECT_EQ(view<QPushButton>("english").text(), "Weitermachen");
    EXPECT_EQ(view<QPushButton>("english").width(), view<QPushButton>("german").width());
}

TEST_F(ATranslatedInterface, LeavesAWrappingTextAndAnActionsButtonTheirWidth) {
    load(InterfaceFolder::widget("QLabel", "label", {10, 0, 60, 40}, "",
                                 InterfaceFolder::text("text", "Go") +
                                     "<property name=\"wordWrap\"><bool>true</bool></property>") +
         InterfaceFolder::widget("QToolBar", "bar", {100, 0, 200, 30}, "",
                                 "<addaction name=\"action\"/>") +
         "<action name=\"action\">" + InterfaceFolder::text("text", "Go") + "</action>");
    EXPECT_EQ(view<QLabel>("label").text(), "Weitermachen");
    EXPECT_EQ(view<QLabel>("label").width(), 60);
    const auto* const button = view<QToolBar>("bar").widgetForAction(&view<QAction>("action"));
    EXPECT_EQ(qobject_cast<const QToolButton*>(button)->text(), "Weitermachen");
}

TEST_F(ATranslatedInterface, IsMirroredWhereOneReadsFromTheRight) {
    folder.write("ar.lproj/Test.strings", "a = \"متابعة العمل الآن\"; b = \"توقف\"; c = \"كلا\";");
    load(button("first", {10, 0, 60, 20}, "rightMargin") +
             button("second", {78, 0, 60, 20}, "rightMargin"),
         "ar");
    const QRect first = view<QPushButton>("first").geometry();
    const QRect second = view<QPushButton>("second").geometry();
    EXPECT_GT(first.width(), 80);
    EXPECT_EQ(first.right() + 1, 390);
    EXPECT_EQ(second.right() + 1, first.x() - 8);
}

} // namespace
} // namespace plenzo
