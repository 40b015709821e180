#pragma once

#include "propertylist/string_table.h"
#include "ui/alarm/alarm_panel_fixture.h"
#include "ui/alarm/alarm_table_view.h"
#include "ui/alarm/alarm_text_field.h"
#include "ui/alarm/alarm_window.h"
#include "ui/alarm/snooze_popup.h"

#include <QtCore/qtestsupport_core.h>

#include <QApplication>
#include <QPushButton>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// The program's texts in one language, as its table has them.
class TextsOfLanguage final : public LocalizedStrings {
public:
    explicit TextsOfLanguage(const std::string& language) {
        std::ifstream file(PLENZO_RESOURCES "/" + language + ".lproj/Localizable.strings");
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        m_table = StringTable::fromBytes(std::as_bytes(std::span(bytes)));
    }
    [[nodiscard]] std::string string(std::string_view key) const override {
        return std::string(m_table.string(key).value_or(""));
    }

private:
    StringTable m_table;
};

/// The whole alarm window, on a screen that nobody sees.
struct AlarmWindowFixture : AlarmSurroundings {
    explicit AlarmWindowFixture(const std::string& language = "en")
        : texts(language), files(PLENZO_RESOURCES, {language}),
          alarmWindow(AlarmWindow::load({.window = {.interfaceFiles = files,
                                                    .strings = texts,
                                                    .iconFolder = PLENZO_RESOURCES "/icons",
                                                    .prepareWindow = {},
                                                    .activate = {}},
                                         .workspace = workspace,
                                         .defaults = defaults,
                                         .clock = clock,
                                         .regionalSettings = regionalSettings,
                                         .timers = timers})) {}

    void add(const std::vector<std::string>& titles) {
        for (const std::string& title : titles) {
            controller().addDisplayAlarm(alarm(title));
        }
        controller().showAlarmWindowIfNecessary();
    }
    /// Whether events of the toolkit have brought it about.
    static bool await(const std::function<bool()>& isDone) {
        constexpr int limitMilliseconds = 20000;
        return QTest::qWaitFor(isDone, limitMilliseconds);
    }
    void activate() const {
        QApplication::setActiveWindow(&panel());
        await([this] { return panel().isActiveWindow(); });
    }
    void deactivate() const {
        QApplication::setActiveWindow(nullptr);
        await([this] { return !panel().isActiveWindow(); });
    }

    [[nodiscard]] AlarmPanelController& controller() const { return alarmWindow->controller(); }
    [[nodiscard]] QWidget& panel() const { return alarmWindow->window().widget(); }
    [[nodiscard]] AlarmTableView& list() const { return alarmWindow->window().list(); }
    template <typename Widget = QWidget>
    [[nodiscard]] Widget& part(const char* name) const {
        return dynamic_cast<Widget&>(*panel().findChild<QWidget*>(name));
    }
    [[nodiscard]] AlarmTextField& field() const { return part<AlarmTextField>("snoozeTextField"); }
    [[nodiscard]] SnoozePopup& popup() const { return part<SnoozePopup>("snoozePopup"); }
    [[nodiscard]] QPushButton& snoozeButton() const { return part<QPushButton>("snoozeButton"); }
    [[nodiscard]] QPushButton& dismissButton() const { return part<QPushButton>("dismissButton"); }
    [[nodiscard]] std::int64_t amount() const { return controller().snoozeAmount().value; }

    TextsOfLanguage texts;
    InterfaceFiles files;
    std::unique_ptr<AlarmWindow> alarmWindow;
};

} // namespace plenzo
