#include "app/agent.h"
#include "app/list_command.h"
#include "app/version.h"
#include "linux/display.h"
#include "linux/main_string_table.h"

#include <CLI/CLI.hpp>

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>
#include <string>

namespace {

QIcon windowIcon() {
    // Where the program was built, no icon theme knows it.
    const QString file = QString::fromStdString(plenzo::resourceFolder()) +
                         "/../icons/hicolor/scalable/apps/org.plenzo.PlenzoAlarm.svg";
    return QIcon::fromTheme("org.plenzo.PlenzoAlarm", QIcon(QDir::cleanPath(file)));
}

/// The toolkit's own texts, in its dialogs, in the user's language, where they are installed.
void translateToolkit(QApplication& application) {
    auto* translator = new QTranslator(&application);
    for (const std::string& language : plenzo::languagesOfUser()) {
        if (translator->load("qtbase_" + QString::fromStdString(language),
                             QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            QCoreApplication::installTranslator(translator);
            return;
        }
    }
}

/// Without a screen the agent works all the same; its alarms are notifications then.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    if (!plenzo::displayIsThere()) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setApplicationDisplayName("Plenzo Alarm");
    QApplication::setDesktopFileName("org.plenzo.PlenzoAlarm");
    QApplication::setWindowIcon(windowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    translateToolkit(*application);
    return application;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App commandLine("The alarm agent of the calendar: fires the alarms of the events that the "
                         "calendar host hands to it.",
                         "plenzoalarm");
    bool list = false;
    commandLine.add_flag("--list", list, "Print the pending alarms of the running agent and end");
    commandLine.set_version_flag("--version", std::string("plenzoalarm ") + plenzo::linkVersion,
                                 "Print the version, as the host has to send it, and end");
    try {
        commandLine.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        constexpr int usageError = 2;
        return commandLine.exit(error) == 0 ? 0 : usageError;
    }
    if (list) {
        return plenzo::listPendingAlarms();
    }
    const auto application = makeApplication(argc, argv);
    return plenzo::runAgent();
}
