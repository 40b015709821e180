#pragma once

#include "propertylist/key.h"

/// Every known key as a constant: `keys::title`. The rows are in known_key_names.h.
namespace plenzo::keys {

namespace numbers {
#define PLENZO_KEY_NUMBER(identifier, name) identifier,
enum KnownKeyNumber : std::size_t { PLENZO_KNOWN_KEYS(PLENZO_KEY_NUMBER) };
#undef PLENZO_KEY_NUMBER
} // namespace numbers

#define PLENZO_KEY_CONSTANT(identifier, name)                                                      \
    inline constexpr Key identifier{knownKeyNames + numbers::identifier};
PLENZO_KNOWN_KEYS(PLENZO_KEY_CONSTANT)
#undef PLENZO_KEY_CONSTANT

} // namespace plenzo::keys
