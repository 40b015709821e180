#pragma once

#include "propertylist/dictionary.h"

#include <optional>

namespace sdbus {
class Message;
}

namespace plenzo {

// Property-list values from a bus message, read in place. What a variant holds becomes
//   s                   a string
//   y n q i u x t d b   a number or boolean
//   (d)                 a date, seconds since 2001-01-01 00:00:00 UTC
//   ay                  data
//   av, as, aa{sv}      an array
//   a{sv}               a dictionary, in which the last of several equal keys counts
// and anything else is left out, with its key. So is what lies more than 32 collections deep, which
// is beyond what the bus lets through.
//
// Nothing when the message goes on with another type, or breaks off or is damaged further in: then
// the call must be dropped as a whole. Text with a noncharacter (U+FFFE and its like) counts as
// damage, because the bus library reads no further there.

/// Reads an argument of the type aa{sv}: an array of dictionaries.
[[nodiscard]] std::optional<Array> readDictionaries(sdbus::Message& message);

/// Reads an argument of the type a{sv}.
[[nodiscard]] std::optional<Dictionary> readDictionary(sdbus::Message& message);

} // namespace plenzo
