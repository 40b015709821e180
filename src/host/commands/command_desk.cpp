#include "host/commands/command_desk.h"

namespace plenzo {

CommandDesk::CommandDesk(CommandWorld& world, FileReplacement& files, LocalEdits& localEdits,
                         sdbus::IConnection& connection)
    : m_notices(connection),
      m_presentation(pageFolderOfUser(), [this](const Notice& notice) { m_notices.send(notice); }),
      m_messages([this](const Notice& notice) { m_notices.send(notice); }),
      m_pending(files, pendingCommandsPath()),
      m_execution(world, files, localEdits, m_presentation),
      m_queue(world, m_execution, m_pending, m_messages),
      m_service(connection, [this](const std::string& url, const std::string& token) {
          m_queue.receive(url, token);
      }) {}

void CommandDesk::begin(const std::vector<std::string>& urls) {
    m_queue.tryAgain();
    for (const std::string& url : urls) {
        m_queue.receive(url, {});
    }
}

} // namespace plenzo
