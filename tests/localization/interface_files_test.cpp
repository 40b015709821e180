#include "localization/interface_files.h"
#include "localization/interface_folder.h"
#include "localization/springs_and_struts.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QLabel>
#include <QPushButton>
#include <memory>
#include <string>
#include <vector>

namespace plenzo {
namespace {

class Owner final : public InterfaceOwner {
public:
    [[nodiscard]] std::string nibNameForLocalizedNib() const override { return name; }
    void awakeFromNibAfterLocalization(const std::string& translated) override {
        told.push_back(translated);
    }

    std::string name;
    std::vector<std::string> told;
};

class Panel final : public QWidget, public InterfaceOwner {
public:
    explicit Panel(QWidget* parent) : QWidget(parent) {}
    void awakeFromNibAfterLocalization(const std::string& name) override { told.push_back(name); }

    std::vector<std::string> told;
};

class ALoadedInterface : public testing::Test {
protected:
    ALoadedInterface() {
        folder.writeWindow(InterfaceFolder::widget("QPushButton", "go", {10, 10, 80, 24},
                                                   "leftMargin",
                                                   InterfaceFolder::text("text", "Go")));
        folder.write("en.lproj/Test.strings", "\"go.title\" = \"Go\";");
        folder.write("de.lproj/Test.strings", "\"go.title\" = \"Los\";");
    }
    std::unique_ptr<QWidget> loaded(const std::vector<std::string>& languages,
                                    InterfaceOwner* owner = nullptr) const {
        return InterfaceFiles(folder.path(), languages).load("Test", owner);
    }
    std::string titleIn(const std::vector<std::string>& languages) const {
        const auto window = loaded(languages);
        const auto* const button = window ? window->findChild<QPushButton*>("go") : nullptr;
        return button != nullptr ? button->text().toStdString() : "nothing";
    }

    InterfaceFolder folder;
};

TEST_F(ALoadedInterface, IsTranslatedIntoTheFirstLanguageThatHasATable) {
    EXPECT_EQ(titleIn({"de", "en"}), "Los");
    EXPECT_EQ(titleIn({"de_AT", "en"}), "Los");
    EXPECT_EQ(titleIn({"pt_BR", "de", "fr", "en"}), "Los");
    EXPECT_EQ(titleIn({"en", "de"}), "Go");
    EXPECT_EQ(titleIn({"../de", "fr"}), "Go");
    EXPECT_EQ(titleIn({}), "Go");
}

TEST_F(ALoadedInterface, TellsItsOwnerOutsideEnglishOnly) {
    Owner owner;
    EXPECT_NE(loaded({"en"}, &owner), nullptr);
    EXPECT_NE(loaded({"fr", "en"}, &owner), nullptr);
    EXPECT_TRUE(owner.told.empty());
    EXPECT_NE(loaded({"de", "en"}, &owner), nullptr);
    EXPECT_EQ(owner.told, std::vector<std::string>{"Test"});
}

TEST_F(ALoadedInterface, StaysEnglishWithoutTheEnglishTableThoughItsOwnerIsTold) {
    std::filesystem::remove(folder.path() + "/en.lproj/Test.strings");
    Owner owner;
    EXPECT_EQ(titleIn({"de"}), "Go");
    EXPECT_NE(loaded({"de"}, &owner), nullptr);
    EXPECT_EQ(owner.told.size(), 1U);
}

TEST_F(ALoadedInterface, KeepsWhatTheTablesLackOrGarble) {
    folder.write("de.lproj/Test.strings", "\"other\" = \"Los\";");
    EXPECT_EQ(titleIn({"de"}), "Go");
    folder.write("de.lproj/Test.strings", "\"go.title\" = \"\";");
    EXPECT_EQ(titleIn({"de"}), "Go");
    folder.write("de.lproj/Test.strings", std::string("\xff\xfe\0\x80 \"go.title\" = ", 18));
    EXPECT_EQ(titleIn({"de"}), "Go");
}

TEST_F(ALoadedInterface, TellsItsWidgetWheneverThereWasADictionary) {
    folder.write("Test.ui", R"(<ui version="4.0"><widget class="Panel" name="panel"/>
        <customwidgets><customwidget><class>Panel</class><extends>QWidget</extends></customwidget>
        </customwidgets></ui>)");
    const auto toldIn = [this](const char* language) {
        InterfaceFiles files(folder.path(), {language});
        files.registerWidget<Panel>("Panel");
        const auto widget = files.load("Test");
        const auto* const panel = dynamic_cast<Panel*>(widget.get());
        return panel != nullptr ? panel->told : std::vector<std::string>{"no panel"};
    };
    EXPECT_EQ(toldIn("de"), std::vector<std::string>{"Test"});
    EXPECT_EQ(toldIn("en"), std::vector<std::string>{});
    EXPECT_EQ(toldIn("fr"), std::vector<std::string>{});
}

TEST_F(ALoadedInterface, IsNothingWhenItsFileIsMissingOrBroken) {
    InterfaceFiles files(folder.path(), {"de"});
    EXPECT_EQ(files.load("Missing"), nullptr);
    const std::string window = InterfaceFolder::window("");
    for (const std::string& broken :
         {std::string(), std::string("no interface"), std::string("<html/>"),
          std::string("<ui version=\"4.0\"/>"), window.substr(0, window.size() - 3),
          std::string("<ui version=\"4.0\"><widget class=\"Unknown\" name=\"x\"/></ui>")}) {
        folder.write("Broken.ui", broken);
        EXPECT_EQ(files.load("Broken"), nullptr) << broken;
    }
}

TEST_F(ALoadedInterface, HasOurWidgetsOrElseTheOnesThatTheyExtend) {
    folder.write(
        "Test.ui",
        InterfaceFolder::window(InterfaceFolder::widget("Special", "special", {0, 0, 9, 9}, ""))
            .insert(
                18,
                R"(<customwidgets><customwidget><class>Special</class><extends>QLabel</extends></customwidget></customwidgets>)"));
    class Special : public QLabel {
    public:
        explicit Special(QWidget* parent) : QLabel(parent) {}
    };
    InterfaceFiles files(folder.path(), {"en"});
    EXPECT_NE(files.load("Test")->findChild<QLabel*>("special"), nullptr);
    files.registerWidget<Special>("Special");
    EXPECT_NE(dynamic_cast<Special*>(files.load("Test")->findChild<QLabel*>("special")), nullptr);
}

TEST_F(ALoadedInterface, AsksItsOwnerForANameWhenItHasNone) {
    const auto titleFrom = [this](InterfaceOwner* owner, const char* title) {
        QByteArray bytes =
            QByteArray::fromStdString(InterfaceFolder::window(InterfaceFolder::widget(
                "QPushButton", "go", {10, 10, 80, 24}, "", InterfaceFolder::text("text", title))));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const auto window = InterfaceFiles(folder.path(), {"de"}).loadFrom(buffer, owner);
        return window->findChild<QPushButton*>()->text().toStdString();
    };
    Owner owner;
    EXPECT_EQ(titleFrom(nullptr, "Go"), "Go");
    EXPECT_EQ(titleFrom(&owner, "Go"), "Go");
    EXPECT_TRUE(owner.told.empty());
    owner.name = "Test";
    EXPECT_EQ(titleFrom(&owner, "Go"), "Los");
    EXPECT_EQ(owner.told, std::vector<std::string>{"Test"});
}

TEST_F(ALoadedInterface, HasItsFontSizesInPixels) {
    folder.writeWindow(
        R"(<property name="font"><font><pixelsize>17</pixelsize></font></property>)" +
        InterfaceFolder::widget(
            "QLabel", "own", {0, 0, 9, 9}, "",
            R"(<property name="font"><font><pointsize>11</pointsize><bold>true</bold></font></property>)") +
        InterfaceFolder::widget(
            "QLabel", "inherited", {0, 0, 9, 9}, "",
            R"(<property name="font"><font><bold>true</bold></font></property>)"));
    const auto window = loaded({"en"});
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->font().pixelSize(), 17);
    EXPECT_EQ(window->findChild<QLabel*>("own")->font().pixelSize(), 11);
    EXPECT_TRUE(window->findChild<QLabel*>("own")->font().bold());
    EXPECT_EQ(window->findChild<QLabel*>("inherited")->font().pixelSize(), 17);
}

TEST_F(ALoadedInterface, IsReadFromTheRightInLanguagesThatAre) {
    for (const char* language : {"ar", "he", "fa"}) {
        folder.write(std::string(language) + ".lproj/Test.strings", "\"go.title\" = \"Go\";");
        InterfaceFiles files(folder.path(), {language, "en"});
        EXPECT_TRUE(files.isRightToLeft()) << language;
        const auto window = files.load("Test");
        EXPECT_EQ(window->layoutDirection(), Qt::RightToLeft);
        const auto* const button = window->findChild<QPushButton*>("go");
        EXPECT_EQ(button->geometry().right() + 1, 390) << "10 from the side where one begins";
    }
    EXPECT_EQ(InterfaceFiles(folder.path(), {"ur", "de"}).language(), "de");
    EXPECT_FALSE(InterfaceFiles(folder.path(), {"ur", "de"}).isRightToLeft());
    EXPECT_EQ(InterfaceFiles("/nowhere", {"ar"}).language(), "en");
}

TEST_F(ALoadedInterface, FollowsItsWindowByItsMasks) {
    const auto window = loaded({"en"});
    window->show();
    window->resize(500, 100);
    EXPECT_EQ(window->findChild<QPushButton*>("go")->geometry(), QRect(110, 10, 80, 24));
}

} // namespace
} // namespace plenzo
