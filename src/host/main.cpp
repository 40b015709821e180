#include "host/command_line.h"
#include "host/configuration/configuration.h"
#include "host/configuration_check.h"
#include "host/host.h"

#include <iostream>

int main(int argumentCount, char** arguments) {
    plenzo::CommandLine commandLine = plenzo::readCommandLine(argumentCount, arguments);
    if (!commandLine.options) {
        return commandLine.exitStatus;
    }
    if (commandLine.options->mode == plenzo::HostMode::Check) {
        const std::string path = plenzo::configurationPath(commandLine.options->configurationPath);
        return plenzo::checkConfiguration(path, std::cout) ? 0 : 1;
    }
    const bool dumps = commandLine.options->mode == plenzo::HostMode::Dump;
    plenzo::Host host(std::move(*commandLine.options));
    if (dumps) {
        return host.dump() ? 0 : 1;
    }
    return host.serve();
}
