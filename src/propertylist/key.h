#pragma once

#include "propertylist/known_key_names.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace plenzo {

/// A dictionary key. A known name is always the interned one, so that known keys compare by
/// pointer; any other name is kept in a reference-counted block of its own and goes with its last
/// key.
class Key {
public:
    /// A name ends after 4 GiB at the latest.
    Key(std::string_view name);
    Key(const char* name) : Key(std::string_view(name)) {}
    Key(const std::string& name) : Key(std::string_view(name)) {}
    /// An entry of `knownKeyNames`; this is what the constants in `keys` are made with.
    explicit constexpr Key(const KeyName* knownName) : m_name(knownName) {}

    constexpr Key(const Key& other) : m_name(other.m_name) {
        if (!isKnown())
            retain();
    }
    constexpr Key(Key&& other) noexcept : m_name(std::exchange(other.m_name, knownKeyNames)) {}
    constexpr Key& operator=(const Key& other) {
        Key copy(other);
        std::swap(m_name, copy.m_name);
        return *this;
    }
    constexpr Key& operator=(Key&& other) noexcept {
        std::swap(m_name, other.m_name);
        return *this;
    }
    constexpr ~Key() {
        if (!isKnown())
            release();
    }

    /// Points into the key.
    constexpr std::string_view name() const { return m_name->text(); }

    /// Whether the name is one of `knownKeyNames`.
    constexpr bool isKnown() const { return isKnownName(m_name); }
    /// Its place in `knownKeyNames`; only of a known key.
    constexpr std::size_t knownNumber() const {
        return static_cast<std::size_t>(m_name - knownKeyNames);
    }

    friend bool operator==(const Key& left, const Key& right) {
        if (left.m_name == right.m_name)
            return true;
        return !left.isKnown() && !right.isKnown() && left.name() == right.name();
    }

private:
    friend class KeyView;

    static constexpr bool isKnownName(const KeyName* name) {
        return std::greater_equal<>()(name, knownKeyNames + 0) &&
               std::less<>()(name, knownKeyNames + knownKeyCount);
    }
    void retain() const;
    void release() const;

    const KeyName* m_name;
};

/// A key to look up: borrowed from a Key or from text, without allocating. Lives no longer than
/// what it was made from.
class KeyView {
public:
    constexpr KeyView(const Key& key) : m_name(key.m_name), m_length(nameLength) {}
    KeyView(std::string_view name) : m_name(knownKeyName(name)), m_length(nameLength) {
        if (m_name == nullptr) {
            m_characters = name.data();
            m_length = name.size();
        }
    }
    KeyView(const char* name) : KeyView(std::string_view(name)) {}
    KeyView(const std::string& name) : KeyView(std::string_view(name)) {}

    constexpr std::string_view name() const {
        return m_length == nameLength ? m_name->text() : std::string_view(m_characters, m_length);
    }

    bool isKnown() const { return m_length == nameLength && Key::isKnownName(m_name); }
    /// Of a known name only: whether the key has it.
    bool isSameKnown(const Key& key) const { return m_name == key.m_name; }

    /// Known names by pointer, the others by text.
    bool matches(const Key& key) const {
        if (m_length == nameLength) {
            if (m_name == key.m_name)
                return true;
            if (Key::isKnownName(m_name))
                return false;
        }
        return !key.isKnown() && key.name() == name();
    }

private:
    /// Instead of the characters' number: the view is of a KeyName. Two words go in registers.
    static constexpr std::size_t nameLength = SIZE_MAX;

    union {
        const KeyName* m_name;
        const char* m_characters;
    };
    std::size_t m_length;
};

} // namespace plenzo
