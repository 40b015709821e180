#include "host/commands/command_execution.h"

#include "host/commands/unique_identifiers.h"
#include "host/configuration/first_configuration.h"
#include "host/configuration/new_item_place.h"
#include "host/edits/calendar_writer.h"
#include "host/edits/command_targets.h"
#include "host/edits/component_text.h"
#include "host/edits/zone_component.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace plenzo {

namespace {

using Kind = HostCommand::Kind;
using State = CommandResult::State;

CommandResult refused(std::string why) {
    return {State::Refused, std::move(why)};
}

CommandResult waits(std::string why) {
    return {State::Waits, std::move(why)};
}

CommandResult doubtful(std::string why) {
    return {State::Doubtful, std::move(why)};
}

/// It is there already when the program was killed before it could take note of that.
EditResult withItem(std::string_view text, const std::string& component,
                    const PendingCommand& command, const std::string& zoneName) {
    if (holdsItem(text, command.id)) {
        return {std::string(text), {}};
    }
    constexpr cctz::seconds longAgo{400 * 86'400}; // so that a rule holds when the item begins
    const bool isZoned = component.find(";TZID=") != std::string::npos;
    const std::string zone =
        isZoned ? zoneComponent(zoneName, command.received - longAgo) : std::string();
    if (zone.empty()) {
        return addComponent(text, component);
    }
    const EditResult zoned = addZone(text, zone);
    return zoned.error.empty() ? addComponent(zoned.text, component) : zoned;
}

} // namespace

CommandResult CommandExecution::execute(const PendingCommand& command,
                                        const std::string& activationToken) {
    switch (command.command.kind) {
    case Kind::Snooze:
    case Kind::Acknowledge:
        return changeAlarm(command.command);
    case Kind::Complete:
        return complete(command.command);
    case Kind::New:
        return makeItem(command);
    case Kind::Preferences:
        return openConfiguration(activationToken);
    case Kind::Show:
    case Kind::Info:
        break;
    }
    return present(command.command, activationToken);
}

CommandResult CommandExecution::changeAlarm(const HostCommand& command) {
    const CommandTargets targets(m_world.calendars());
    const auto target = targets.alarm(command.uid);
    const Calendar* calendar = targets.calendar(command.uid);
    if (!target) {
        const bool isGone = calendar != nullptr && command.kind == Kind::Acknowledge;
        return isGone ? doubtful({}) : whyNotChanged(calendar, false);
    }
    const bool isSnooze = command.kind == Kind::Snooze;
    if (calendar->isReadOnly) {
        return changeAlarmLocally(
            {*target, isSnooze ? std::optional(untilOf(command)) : std::nullopt, m_world.now()});
    }
    return write(target->occurrence.path, [&](std::string_view text) {
        return isSnooze ? snoozeAlarm(text, *target, untilOf(command), editContext())
                        : acknowledgeAlarm(text, *target, editContext());
    });
}

/// The agent leaves alone what is past when it hears of it, and a command may have waited.
SystemSeconds CommandExecution::untilOf(const HostCommand& command) {
    constexpr cctz::seconds soonest{2};
    return std::max(command.until, m_world.now() + soonest);
}

CommandResult CommandExecution::changeAlarmLocally(const LocalEdit& edit) {
    const std::string& path = edit.target.occurrence.path;
    const FoundFile found = m_files.read(m_files.realPath(path));
    if (!found.error.empty()) {
        return waits(path + ": " + found.error);
    }
    const std::string why = m_localEdits.whyNotAdded(edit, found.text);
    if (!why.empty()) {
        return refused(path + ": " + why);
    }
    const std::string error = m_localEdits.add(edit);
    m_world.noteEdit(path);
    return error.empty() ? CommandResult()
                         : refused("it is remembered until the program ends only: " + error);
}

CommandResult CommandExecution::complete(const HostCommand& command) {
    const CommandTargets targets(m_world.calendars());
    const auto target = targets.occurrence(command.uid);
    const Calendar* calendar = targets.calendar(command.uid);
    if (!target || calendar->isReadOnly) {
        return whyNotChanged(calendar, target.has_value());
    }
    return write(target->path, [&](std::string_view text) {
        return completeToDo(text, *target, command.completion, editContext());
    });
}

// A calendar that is not there may be on its way: on a disk that is not mounted yet, say.
CommandResult CommandExecution::whyNotChanged(const Calendar* calendar, bool isKnown) const {
    if (calendar == nullptr) {
        return waits("its calendar is not there");
    }
    return isKnown ? refused("the calendar \"" + calendar->title + "\" is read-only")
                   : doubtful("it is not in the calendar \"" + calendar->title + "\" any more");
}

CommandResult CommandExecution::makeItem(const PendingCommand& command) {
    const NewItemPlace place =
        newItemPlace(m_world.configuration().calendars, m_world.calendars().calendars);
    if (!place.error.empty()) {
        return waits(place.error);
    }
    const QuickEntry entry =
        readQuickEntry(command.command.text,
                       {command.received, m_world.zone(), m_world.configuration().dayMonthOrder});
    const std::string component =
        componentText(entry, {command.id, command.received, m_world.zoneName(),
                              m_world.configuration().newItemAlarmSeconds});
    const std::string path = place.fileFor(command.id);
    const WriteResult written =
        CalendarWriter(m_files).applyOrCreate(path, [&](std::string_view text) {
            return withItem(text, component, command, m_world.zoneName());
        });
    if (!written.error.empty()) {
        return waits(path + ": " + written.error);
    }
    m_world.noteEdit(path);
    return {};
}

/// The file was read-only once, if it has local edits: they are written with this one.
CommandResult CommandExecution::write(const std::string& path,
                                      const std::function<EditResult(std::string_view)>& edit) {
    const WriteResult written = CalendarWriter(m_files).apply(path, [&](std::string_view text) {
        return edit(m_localEdits.amended(path, std::string(text)));
    });
    if (!written.error.empty()) {
        const std::string why = path + ": " + written.error;
        return written.isForGood ? doubtful(why) : waits(why);
    }
    const std::string problem = m_localEdits.forget(path);
    m_world.noteEdit(path);
    return {State::Done, problem};
}

CommandResult CommandExecution::present(const HostCommand& command, const std::string& token) {
    const CommandTargets targets(m_world.calendars());
    const auto target = targets.occurrence(command.uid);
    if (!target) {
        return refused("the item is not there any more");
    }
    const bool isShown =
        (command.kind == Kind::Show && m_presentation.openCalendarFile(target->path, token)) ||
        m_presentation.showSummary(
            itemSummary(*targets.calendar(command.uid), *target, m_world.zone()), token);
    return isShown ? CommandResult() : refused("no program can show it");
}

CommandResult CommandExecution::openConfiguration(const std::string& token) {
    const std::string path = m_world.configurationFile();
    if (path.empty()) {
        return refused("there is no folder for the configuration");
    }
    std::error_code ignored; // the file says why it cannot be made
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    const std::string error =
        m_files.stamp(path).exists
            ? std::string()
            : CalendarWriter(m_files)
                  .applyOrCreate(
                      path,
                      [this](std::string_view) {
                          return EditResult{firstConfiguration(m_world.configuration()), {}};
                      })
                  .error;
    if (!error.empty()) {
        return refused(path + ": " + error);
    }
    return m_presentation.openText(path, token) ? CommandResult()
                                                : refused("no program can open " + path);
}

EditContext CommandExecution::editContext() {
    return {m_world.now(), m_world.zone(), newUniqueIdentifier};
}

} // namespace plenzo
