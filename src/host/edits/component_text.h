#pragma once

#include "host/quick/quick_entry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// What a new component needs besides its entry.
struct ComponentIdentity {
    std::string uid;
    SystemSeconds created;
    std::string zoneName; // of the entry's times, as "Europe/Berlin"
    /// Before the start of an event, or before a to-do is due; nothing for no alarm. What is
    /// all-day has none.
    std::optional<std::int64_t> alarmSeconds = {};
};

/// The VEVENT or VTODO (RFC 5545) of an entry, from BEGIN to END with lines ended by CR LF and
/// folded at 75 bytes, between characters. Times name their zone; without a zone name they are in
/// UTC. An entry that recurs in UTC would leave its wall clock, so that one is floating then.
/// Control characters are left out,
/// and bytes that are no UTF-8 become U+FFFD.
std::string componentText(const QuickEntry& entry, const ComponentIdentity& identity);

/// A content line of UTF-8, folded at 75 bytes (RFC 5545, 3.1), with its CR LF.
std::string foldedLine(std::string_view line);

} // namespace plenzo
