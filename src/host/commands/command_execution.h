#pragma once

#include "host/commands/item_presentation.h"
#include "host/commands/local_edits.h"
#include "host/commands/pending_commands.h"
#include "host/configuration/configuration.h"
#include "host/edits/edit_targets.h"
#include "host/store/calendar_set.h"

#include <cstdint>
#include <string>

namespace plenzo {

/// What commands are about, as it is when one of them is carried out.
class CommandWorld {
public:
    CommandWorld() = default;
    CommandWorld(const CommandWorld&) = delete;
    CommandWorld& operator=(const CommandWorld&) = delete;
    virtual ~CommandWorld() = default;

    /// As they are now, after all edits that were noted.
    virtual const CalendarSet& calendars() = 0;
    virtual const Configuration& configuration() = 0;
    /// Which need not exist.
    virtual std::string configurationFile() = 0;
    virtual SystemSeconds now() = 0;
    virtual CalendarZone zone() = 0;
    /// As "Europe/Berlin"; empty when nobody knows it.
    virtual std::string zoneName() = 0;
    /// That file has another text now, or other local edits.
    virtual void noteEdit(const std::string& calendarFile) = 0;
};

/// What has become of a command.
struct CommandResult {
    /// Waits: it may be carried out later, when a file can be written or is there again. Doubtful:
    /// not in what the files hold now, which somebody may be just writing. Refused: it never will
    /// be.
    enum class State : std::uint8_t { Done, Waits, Doubtful, Refused };

    State state = State::Done;
    /// For the user; of what is done, for whoever reads the log. Without one, what is doubtful need
    /// not be done: an alarm is to be dismissed that is gone.
    std::string problem;
};

/// Carries out commands: changes the calendar files, and opens what is to be shown.
class CommandExecution {
public:
    CommandExecution(CommandWorld& world, FileReplacement& files, LocalEdits& localEdits,
                     ItemPresentation& presentation)
        : m_world(world), m_files(files), m_localEdits(localEdits), m_presentation(presentation) {}

    /// The token lets the program that opens take the focus; it may be empty.
    CommandResult execute(const PendingCommand& command, const std::string& activationToken);

private:
    CommandResult changeAlarm(const HostCommand& command);
    CommandResult changeAlarmLocally(const LocalEdit& edit);
    CommandResult complete(const HostCommand& command);
    CommandResult makeItem(const PendingCommand& command);
    CommandResult present(const HostCommand& command, const std::string& token);
    CommandResult openConfiguration(const std::string& token);
    CommandResult whyNotChanged(const Calendar* calendar, bool isKnown) const;
    CommandResult write(const std::string& path,
                        const std::function<EditResult(std::string_view)>& edit);
    [[nodiscard]] SystemSeconds untilOf(const HostCommand& command);
    EditContext editContext();

    CommandWorld& m_world;
    FileReplacement& m_files;
    LocalEdits& m_localEdits;
    ItemPresentation& m_presentation;
};

} // namespace plenzo
