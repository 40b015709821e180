#pragma once

#include "host/commands/command_queue.h"
#include "host/commands/command_service.h"
#include "host/commands/desktop_presentation.h"
#include "host/commands/notice_sender.h"

#include <string>
#include <vector>

namespace plenzo {

/// Everything that it takes to carry out the commands that come over the session bus. The
/// connection outlives it and is processed by somebody else.
class CommandDesk {
public:
    CommandDesk(CommandWorld& world, FileReplacement& files, LocalEdits& localEdits,
                sdbus::IConnection& connection);

    /// False when another host has the name.
    bool takeName() { return m_service.takeName(); }

    /// Takes up what a former run left: once, with the name (see `PendingCommands::load`).
    std::string load() { return m_pending.load(); }

    /// Carries out what waits, and these commands.
    void begin(const std::vector<std::string>& urls);

    CommandQueue& queue() { return m_queue; }

private:
    NoticeSender m_notices;
    DesktopPresentation m_presentation;
    UserMessages m_messages;
    PendingCommands m_pending;
    CommandExecution m_execution;
    CommandQueue m_queue;
    CommandService m_service;
};

} // namespace plenzo
