#include "host/commands/pending_commands.h"

#include "host/agent_date.h"
#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <utility>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostCommands = 1'000;
constexpr mode_t ofUserAlone = S_IRUSR | S_IWUSR;
constexpr double farthestSeconds = 1e11;

Dictionary dictionaryOf(const PendingCommand& command) {
    return {{Key("url"), command.url},
            {Key("received"), agentDate(command.received)},
            {Key("id"), command.id}};
}

std::optional<PendingCommand> commandFrom(const Dictionary& dictionary) {
    const auto url = dictionary.stringForKey("url");
    const auto id = dictionary.stringForKey("id");
    const auto received = dictionary.dateForKey("received");
    if (!url || !id || !received ||
        !(std::fabs(received->secondsSinceReferenceDate) < farthestSeconds)) {
        return std::nullopt;
    }
    const auto command = readHostCommand(*url);
    const auto seconds = static_cast<std::int64_t>(received->secondsSinceReferenceDate);
    return command
               ? std::optional(PendingCommand{std::string(*url), *command,
                                              instantFromAgentSeconds(seconds), std::string(*id)})
               : std::nullopt;
}

std::string makeFolderOf(const std::string& path) {
    std::error_code error;
    const fs::path folder = fs::path(path).parent_path();
    if (fs::create_directories(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    return error ? error.message() : std::string();
}

} // namespace

PendingCommands::PendingCommands(FileReplacement& files, std::string path)
    : m_files(files), m_path(std::move(path)) {
    load();
}

void PendingCommands::load() {
    const std::string text = m_path.empty() ? std::string() : m_files.read(m_path).text;
    const auto value = readBinaryPropertyList(std::as_bytes(std::span(text)));
    const Array* commands = value ? value->array() : nullptr;
    for (std::size_t index = 0; commands != nullptr && index < commands->size(); ++index) {
        const Dictionary* dictionary = (*commands)[index].dictionary();
        auto command = dictionary == nullptr ? std::nullopt : commandFrom(*dictionary);
        if (command && m_commands.size() < mostCommands) {
            m_commands.push_back(std::move(*command));
        }
    }
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
    if (m_path.empty()) {
        return "there is no folder for it";
    }
    if (m_commands.empty()) {
        m_files.remove(m_path);
        return {};
    }
    std::string error = makeFolderOf(m_path);
    if (!error.empty()) {
        return error;
    }
    Array commands;
    for (const PendingCommand& command : m_commands) {
        commands.append(dictionaryOf(command));
    }
    const auto bytes = writeBinaryPropertyList(commands);
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::string beside = m_path + ".new";
    error = m_files.writeThrough(beside, text, ofUserAlone);
    error = error.empty() ? m_files.moveTo(beside, m_path, false) : error;
    if (!error.empty()) {
        m_files.remove(beside);
    }
    return error;
}

std::string pendingCommandsPath() {
    const auto folderFrom = [](const char* variable, const char* below) {
        const char* value = std::getenv(variable);
        const bool isSet = value != nullptr && fs::path(value).is_absolute();
        return isSet ? fs::path(value) / below : fs::path();
    };
    const fs::path state = folderFrom("XDG_STATE_HOME", "plenzohost");
    const fs::path folder = state.empty() ? folderFrom("HOME", ".local/state/plenzohost") : state;
    return folder.empty() ? std::string() : (folder / "commands").string();
}

} // namespace plenzo
