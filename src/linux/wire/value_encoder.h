#pragma once

#include "propertylist/dictionary.h"

namespace sdbus {
class Message;
}

namespace plenzo {

// Property-list values into a bus message, each in a variant of its type:
//   string       s, with U+FFFD in place of what a bus message cannot carry (ill-formed UTF-8, NUL)
//   integer      x, and above INT64_MAX t
//   real         d
//   boolean      b
//   date         (d)
//   data         ay
//   array        aa{sv} or as when it has nothing but dictionaries or strings, otherwise av
//   dictionary   a{sv}
// Nothing and colours are left out, with their keys, and so is what would lie more than 64 bus
// containers deep (a dictionary takes three, an array two): over that the bus breaks the
// connection.
//
// False when the message would have an array above 64 MiB, over which the bus breaks the connection
// too, or could not take what was appended. It must not be sent then.

/// Appends an argument of the type aa{sv}. Elements that are no dictionaries are left out.
[[nodiscard]] bool appendDictionaries(sdbus::Message& message, const Array& dictionaries);

/// Appends an argument of the type a{sv}.
[[nodiscard]] bool appendDictionary(sdbus::Message& message, const Dictionary& dictionary);

} // namespace plenzo
