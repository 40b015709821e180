#include "host/command_line.h"
#include "host/host.h"

int main(int argumentCount, char** arguments) {
    plenzo::CommandLine commandLine = plenzo::readCommandLine(argumentCount, arguments);
    if (!commandLine.options) {
        return commandLine.exitStatus;
    }
    const bool dumps = commandLine.options->mode == plenzo::HostMode::Dump;
    plenzo::Host host(std::move(*commandLine.options));
    if (dumps) {
        return host.dump() ? 0 : 1;
    }
    return host.serve();
}
