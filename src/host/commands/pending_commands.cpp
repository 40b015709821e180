#include "host/commands/pending_commands.h"

#include "host/commands/state_file.h"
#include "host/records/agent_date.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace plenzo {

namespace {

constexpr std::size_t mostCommands = 1'000;

Dictionary dictionaryOf(const PendingCommand& command) {
    return {{Key("url"), command.url},
            {Key("received"), agentDate(command.received)},
            {Key("id"), command.id}};
}

std::optional<PendingCommand> commandFrom(const Dictionary& dictionary) {
    const auto url = dictionary.stringForKey("url");
    const auto id = dictionary.stringForKey("id");
    const auto received = instantForKey(dictionary, "received");
    const auto command = url ? readHostCommand(*url) : std::nullopt;
    return command && id && received ? std::optional(PendingCommand{std::string(*url), *command,
                                                                    *received, std::string(*id)})
                                     : std::nullopt;
}

} // namespace

std::string PendingCommands::load() {
    const StateFile file = readStateFile(m_files, m_path);
    for (const Dictionary& dictionary : file.dictionaries) {
        auto command = commandFrom(dictionary);
        if (command && m_commands.size() < mostCommands) {
            m_commands.push_back(std::move(*command));
        }
    }
    return file.setAside;
}

std::string PendingCommands::add(PendingCommand command) {
    std::erase_if(m_commands, [&](const PendingCommand& earlier) {
        return isReplacedBy(earlier.command, command.command);
    });
    if (m_commands.size() >= mostCommands) {
        m_commands.erase(m_commands.begin());
    }
    m_commands.push_back(std::move(command));
    return save();
}

std::string PendingCommands::remove(const std::string& id) {
    std::erase_if(m_commands, [&](const PendingCommand& command) { return command.id == id; });
    return save();
}

std::string PendingCommands::save() {
    std::vector<Dictionary> dictionaries;
    dictionaries.reserve(m_commands.size());
    for (const PendingCommand& command : m_commands) {
        dictionaries.push_back(dictionaryOf(command));
    }
    return writeStateFile(m_files, m_path, dictionaries);
}

std::string pendingCommandsPath() {
    return stateFilePath("commands");
}

} // namespace plenzo
