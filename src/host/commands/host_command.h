#pragma once

#include "host/edits/calendar_edits.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// What the agent asks of the host with a `plenzoevent` URL.
struct HostCommand {
    enum class Kind { Snooze, Acknowledge, Complete, Show, Info, Preferences, New };

    Kind kind = Kind::Show;
    std::string uid = {};                     // of a reminder (Snooze, Acknowledge) or an event
    SystemSeconds until = {};                 // Snooze
    Completion completion = Completion::Done; // Complete
    std::string text = {};                    // New: the quick entry, in UTF-8
};

/// Reads such a URL; nothing for any other text, or one of more than 64 KiB.
///
///     plenzoevent://snooze/REMINDER/SECONDS       whole seconds since 2001-01-01 00:00:00 UTC
///     plenzoevent://acknowledge/REMINDER
///     plenzoevent://edit/EVENT/completed/YES      or NO
///     plenzoevent://show/EVENT
///     plenzoevent://info/EVENT
///     plenzoevent://new/TEXT                      percent-escaped
///     plenzoevent://prefs/general
std::optional<HostCommand> readHostCommand(std::string_view url);

/// Whether a text is meant as such a URL, by its scheme.
bool isCommandUrl(std::string_view text);

/// Whether the later one of two commands leaves nothing of the earlier one: both are about what
/// becomes of the same alarm, or of the same to-do.
bool isReplacedBy(const HostCommand& earlier, const HostCommand& later);

} // namespace plenzo
