#pragma once

#include "dates/instant.h"
#include "propertylist/dictionary.h"

#include <cstdint>
#include <optional>
#include <string>

namespace plenzo {

/// An alarm definition in the older form of the host's records. No alarm is computed from it; it is
/// kept readable.
struct Reminder {
    std::int64_t reminderType = 0;
    double relativeSeconds = 0;
    std::optional<Instant> absoluteTime;
    std::optional<std::string> title;
    std::optional<std::string> note;
    std::optional<std::string> url;
    std::optional<Array> recipients;
    std::optional<Dictionary> xProps;
};

/// Reads "reminderType", "relativeSeconds", "absoluteTime", "title", "note", "url", "recipients"
/// and "xProps". An absent number is 0; anything else absent, or of another type, the reminder
/// lacks.
[[nodiscard]] Reminder reminderFromDictionary(const Dictionary& dictionary);

} // namespace plenzo
