#include "localization/interface_folder.h"
#include "localization/springs_and_struts.h"
#include "support/text_room.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#if __has_include("ui/alarm/alarm_panel_window.h")
#include "ui/alarm/alarm_panel_window.h"
#include "ui/alarm/snooze_popup.h"
#include "ui/controls/panel_style.h"
#endif

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const char* const languages[] = {"en", "de", "fr", "es", "ja", "ar"};

std::vector<std::string> cutTextsIn(const InterfaceFolder& folder, const char* language) {
    const auto window = InterfaceFiles(folder.path(), {language}).load("Test");
    return window ? cutTexts(*window) : std::vector<std::string>{"nothing is loaded"};
}

std::vector<std::string> cutTextsOf(const std::string& widgets) {
    const InterfaceFolder folder;
    folder.writeWindow(widgets);
    return cutTextsIn(folder, "en");
}

/// Each with a text that is about 190 pixels wide, and the property that has it.
struct Kind {
    const char* className;
    const char* property;
    const char* more;
};
constexpr const char* longText = "A text that is rather long";
const Kind kinds[] = {
    {"QLabel", "text", ""},
    {"QPushButton", "text", ""},
    {"QToolButton", "text", ""},
    {"QCheckBox", "text", ""},
    {"QRadioButton", "text", ""},
    {"QGroupBox", "title", ""},
    {"QLineEdit", "placeholderText", ""},
    {"QComboBox", "",
     "<item><property name=\"text\"><string>A text that is rather long</string></property></item>"},
    {"QTabWidget", "",
     "<widget class=\"QWidget\" name=\"page\"><attribute name=\"title\"><string>A text that is "
     "rather "
     "long</string></attribute></widget>"},
};

std::string ofKind(const Kind& kind, const QRect& frame) {
    const std::string property = kind.property;
    const std::string text = property.empty() ? "" : InterfaceFolder::text(property, longText);
    return InterfaceFolder::widget(kind.className, "view", frame, "", text + kind.more);
}

TEST(ACutText, IsFoundInEveryKindOfView) {
    for (const Kind& kind : kinds) {
        EXPECT_THAT(cutTextsOf(ofKind(kind, {10, 10, 250, 50})), IsEmpty()) << kind.className;
        EXPECT_THAT(cutTextsOf(ofKind(kind, {10, 10, 120, 50})), ElementsAre(HasSubstr(longText)))
            << kind.className;
    }
}

TEST(ACutText, IsOneThatIsTooHighOrOutOfSight) {
    const std::string text = InterfaceFolder::text("text", longText);
    const auto label = [&](const QRect& frame, const std::string& more = {}) {
        return InterfaceFolder::widget("QLabel", "label", frame, "", text + more);
    };
    const std::string wraps = "<property name=\"wordWrap\"><bool>true</bool></property>";
    EXPECT_THAT(cutTextsOf(label({10, 10, 250, 5})), SizeIs(1));
    EXPECT_THAT(cutTextsOf(label({200, 10, 250, 50})), ElementsAre(HasSubstr("sticks out")));
    EXPECT_THAT(cutTextsOf(label({10, 10, 250, 20}) + label({200, 20, 190, 20})),
                ElementsAre(HasSubstr("lies on label")));
    EXPECT_THAT(cutTextsOf(label({10, 10, 120, 50}, wraps)), IsEmpty());
    EXPECT_THAT(cutTextsOf(label({10, 10, 120, 20}, wraps)), SizeIs(1));
}

TEST(ALongTranslation, GetsItsRoomInEveryLanguage) {
    const InterfaceFolder folder;
    const auto button = [](const char* name, const QRect& frame, const char* mask) {
        return InterfaceFolder::widget("QPushButton", name, frame, mask,
                                       InterfaceFolder::text("text", "Snooze All"));
    };
    folder.writeWindow(button("left", {20, 10, 120, 24}, "rightMargin") +
                       button("right", {260, 10, 120, 24}, "leftMargin") +
                       button("wide", {20, 50, 120, 24}, "width rightMargin") +
                       button("centered", {140, 80, 120, 20}, "leftMargin rightMargin"));
    folder.write("en.lproj/Test.strings", "a = \"Snooze All\";");
    const char* const texts[] = {"Snooze All",
                                 "Alle zusammen viel später wieder erinnern",
                                 "Tout rappeler plus tard",
                                 "Posponer todas",
                                 "すべてのアラームを後でもう一度通知する",
                                 "تأجيل كل التنبيهات إلى وقت لاحق"};
    for (std::size_t index = 1; index < std::size(texts); ++index) {
        folder.write(std::string(languages[index]) + ".lproj/Test.strings",
                     std::string("a = \"") + texts[index] + "\";");
    }
    for (const char* language : languages) {
        EXPECT_THAT(cutTextsIn(folder, language), IsEmpty()) << language;
    }
}

TEST(ALongTranslation, IsFoundWhereNothingGivesItRoom) {
    const InterfaceFolder folder;
    folder.writeWindow(InterfaceFolder::widget(
        "QFrame", "box", {0, 0, 100, 50}, "rightMargin",
        "<widget class=\"QPushButton\" name=\"fixed\"><property name=\"geometry\"><rect><x>5</x>"
        "<y>5</y><width>60</width><height>24</height></rect></property>" +
            InterfaceFolder::text("text", "Go") + "</widget>"));
    folder.write("en.lproj/Test.strings", "a = Go;");
    folder.write("de.lproj/Test.strings", "a = Weitermachen;");
    EXPECT_THAT(cutTextsIn(folder, "en"), IsEmpty());
    EXPECT_THAT(cutTextsIn(folder, "de"), ElementsAre(HasSubstr("fixed \"Weitermachen\" has")));
}

#if __has_include("ui/alarm/alarm_panel_window.h")

/// As the window does it: its look, and the pop-up as wide as what is selected.
void prepare(QWidget& window) {
    window.setStyleSheet(
        panelStyleSheet(window.palette(), PLENZO_RESOURCES "/icons", window.layoutDirection()));
    window.ensurePolished();
    auto* const popup = dynamic_cast<SnoozePopup*>(window.findChild<QWidget*>("snoozePopup"));
    auto* const layout = popup != nullptr ? SpringsAndStruts::of(popup->parentWidget()) : nullptr;
    if (layout == nullptr) {
        return;
    }
    popup->awakeFromNib();
    popup->ensurePolished();
    QRect frame = layout->frame(popup);
    for (int index = 0; index < popup->count(); ++index) {
        popup->setCurrentIndex(index);
        frame.setWidth(std::max(frame.width(), popup->widthOfSelectedItem()));
    }
    layout->setFrame(popup, frame);
}

TEST(TheInterfaceFiles, HaveNoTextThatIsCutInAnyLanguage) {
    int loaded = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PLENZO_RESOURCES)) {
        for (const char* language : languages) {
            if (entry.path().extension() != ".ui") {
                continue;
            }
            InterfaceFiles files(PLENZO_RESOURCES, {language});
            registerAlarmWidgets(files);
            const auto window = files.load(entry.path().stem().string());
            ASSERT_NE(window, nullptr) << entry.path();
            prepare(*window);
            EXPECT_THAT(cutTexts(*window), IsEmpty()) << entry.path() << " in " << language;
            ++loaded;
        }
    }
    EXPECT_GE(loaded, 3 * 6);
}

#endif

} // namespace
} // namespace plenzo
