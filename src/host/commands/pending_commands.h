#pragma once

#include "host/commands/host_command.h"
#include "host/files/file_replacement.h"

#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// A command that changes a calendar, from its arrival until it is carried out.
struct PendingCommand {
    std::string url;
    HostCommand command;
    SystemSeconds received; // "tomorrow" in a quick entry counts from here
    std::string id;         // its own; the UID of the item that a quick entry makes
};

/// The commands that are not carried out yet, kept in a file (a binary property list) so that they
/// outlive the program and a loss of power.
class PendingCommands {
public:
    PendingCommands(FileReplacement& files, std::string path)
        : m_files(files), m_path(std::move(path)) {}

    /// Takes up what a former run left in the file. Returns where one is now that is damaged and
    /// counts as empty; mostly that is nowhere.
    std::string load();

    [[nodiscard]] const std::vector<PendingCommand>& all() const { return m_commands; }

    /// Adds it in place of those that it replaces. Returns why it could not be written down, or an
    /// empty text; it is kept in memory in any case. Of more than 1,000 the oldest goes.
    std::string add(PendingCommand command);

    /// Returns why that could not be written down, or an empty text.
    std::string remove(const std::string& id);

private:
    std::string save();

    FileReplacement& m_files;
    std::string m_path;
    std::vector<PendingCommand> m_commands;
};

/// Where they are kept: plenzohost/commands in the user's state folder; empty when the user has
/// none.
std::string pendingCommandsPath();

} // namespace plenzo
