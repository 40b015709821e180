#include "propertylist/key.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace plenzo {

namespace {

constexpr std::size_t slotCount = 256;
constexpr std::uint8_t freeSlot = 0xFF;
static_assert(knownKeyCount < slotCount * 2 / 3, "the table of known keys wants more slots");

constexpr std::size_t longestKnownName() {
    std::size_t longest = 0;
    for (const KeyName& name : knownKeyNames)
        longest = std::max<std::size_t>(longest, name.length);
    return longest;
}

constexpr std::size_t firstSlot(std::string_view name) {
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (char character : name)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619u;
    return (hash ^ (hash >> 15)) % slotCount;
}

constexpr std::array<std::uint8_t, slotCount> makeSlots() {
    std::array<std::uint8_t, slotCount> slots{};
    slots.fill(freeSlot);
    for (std::size_t number = 0; number < knownKeyCount; ++number) {
        std::size_t slot = firstSlot(knownKeyNames[number].text());
        while (slots[slot] != freeSlot)
            slot = (slot + 1) % slotCount;
        slots[slot] = static_cast<std::uint8_t>(number);
    }
    return slots;
}

constexpr bool knownNamesAreDistinct() {
    for (std::size_t left = 0; left < knownKeyCount; ++left)
        for (std::size_t right = 0; right < left; ++right)
            if (knownKeyNames[left].text() == knownKeyNames[right].text())
                return false;
    return true;
}
static_assert(knownNamesAreDistinct(), "a known key is listed twice");

constexpr std::array<std::uint8_t, slotCount> slots = makeSlots();

/// A name that is not known: the text follows the head in the same block.
struct OwnedKeyName : KeyName {
    std::atomic<std::uint32_t> references{1};
};

const KeyName* makeOwnedKeyName(std::string_view name) {
    void* memory = std::malloc(sizeof(OwnedKeyName) + name.size());
    if (memory == nullptr)
        std::abort();
    auto* owned = new (memory) OwnedKeyName;
    char* characters = static_cast<char*>(memory) + sizeof(OwnedKeyName);
    std::copy(name.begin(), name.end(), characters);
    owned->characters = characters;
    owned->length = static_cast<std::uint32_t>(name.size());
    return owned;
}

OwnedKeyName* asOwned(const KeyName* name) {
    return static_cast<OwnedKeyName*>(const_cast<KeyName*>(name)); // NOLINT: made non-const above
}

} // namespace

const KeyName* knownKeyName(std::string_view name) {
    if (name.size() > longestKnownName())
        return nullptr;
    for (std::size_t slot = firstSlot(name); slots[slot] != freeSlot; slot = (slot + 1) % slotCount)
        if (knownKeyNames[slots[slot]].text() == name)
            return &knownKeyNames[slots[slot]];
    return nullptr;
}

Key::Key(std::string_view name) : m_name(knownKeyName(name)) {
    if (m_name == nullptr)
        m_name = makeOwnedKeyName(name.substr(0, UINT32_MAX));
}

void Key::retain() const {
    asOwned(m_name)->references.fetch_add(1, std::memory_order_relaxed);
}

void Key::release() const {
    OwnedKeyName* owned = asOwned(m_name);
    if (owned->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(owned);
}

} // namespace plenzo
