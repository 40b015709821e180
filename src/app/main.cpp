#include "app/agent.h"
#include "app/list_command.h"
#include "app/version.h"

#include <CLI/CLI.hpp>

#include <QCoreApplication>
#include <string>

int main(int argc, char** argv) {
    CLI::App commandLine("The alarm agent of the calendar: fires the alarms of the events that the "
                         "calendar host hands to it.",
                         "plenzoalarm");
    bool list = false;
    commandLine.add_flag("--list", list, "Print the pending alarms of the running agent and end");
    commandLine.set_version_flag("--version", std::string("plenzoalarm ") + plenzo::linkVersion,
                                 "Print the version, as the host has to send it, and end");
    CLI11_PARSE(commandLine, argc, argv);
    if (list) {
        return plenzo::listPendingAlarms();
    }
    const QCoreApplication application(argc, argv);
    return plenzo::runAgent();
}
