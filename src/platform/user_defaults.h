#pragma once

#include "propertylist/dictionary.h"

#include <cstdint>
#include <string_view>

namespace plenzo {

/// The user's settings by key. A stored value wins over a registered default; registered defaults
/// are never stored.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// Adds defaults to the registered ones; a key registered before gets the new default.
    virtual void registerDefaults(const Dictionary& defaults) = 0;
    /// The value under the key, or nothing.
    [[nodiscard]] virtual Value valueForKey(std::string_view key) const = 0;
    /// Stores every value of `values` under its key, replacing what was stored there.
    virtual void setValues(const Dictionary& values) = 0;
    /// Writes what was stored since the last time, if anything was. False when that failed; the
    /// values are kept and the next call tries again.
    virtual bool synchronize() = 0;

    /// Typed reading: numbers and numeric strings convert, anything else is false or 0.
    [[nodiscard]] bool boolForKey(std::string_view key) const {
        return valueForKey(key).boolValue();
    }
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const {
        return valueForKey(key).integerValue();
    }
};

} // namespace plenzo
