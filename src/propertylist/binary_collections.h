#pragma once

#include "propertylist/binary_objects.h"
#include "propertylist/binary_scalar_table.h"
#include "propertylist/binary_shared_values.h"
#include "propertylist/dictionary.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace plenzo::binary {

/// Writes a value: its scalars by way of their table, its collections behind what they hold. What
/// several places share, but for short strings, is written once.
class Collections {
public:
    Collections(Objects& objects, ScalarTable& scalars) : m_objects(objects), m_scalars(scalars) {}

    /// False when the format has no such value, or it nests too deep or holds too much.
    bool write(const Value& value);

    /// How many steps a walk over the value takes.
    std::uint64_t steps() const { return m_steps; }

private:
    /// Stands for a value that is left out.
    static constexpr std::uint32_t noReference = UINT32_MAX;

    std::uint32_t referenceTo(const Value& value, std::uint32_t depth);
    std::uint32_t writeNew(const Value& value, std::uint32_t depth);
    std::uint32_t referenceToKey(const Key& key);
    std::uint32_t writeCollection(const Value& value, std::uint32_t depth);
    void collectElements(const Array& array, std::uint32_t depth);
    void collectEntries(const Dictionary& dictionary, std::uint32_t depth);
    void writeArray(std::span<const std::uint32_t> references);
    void writeDictionary(std::span<const std::uint32_t> references);

    Objects& m_objects;
    ScalarTable& m_scalars;
    /// Of the collections that are being written; a dictionary's keys and values alternate.
    std::vector<std::uint32_t> m_collected;
    SharedValues m_shared;
    std::array<std::optional<ScalarTable::Added>, knownKeyCount> m_knownKeys;
    std::uint64_t m_steps = 0;
    std::uint32_t m_deepest = 0;
};

} // namespace plenzo::binary
