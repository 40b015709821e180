#pragma once

#include "propertylist/binary_scalar_table.h"
#include "propertylist/dictionary.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace plenzo::binary {

/// What a value to be written comes to: its collections as lists of references, its scalars in a
/// table. What several places share, but for short strings, is taken up once.
class Collections {
public:
    /// References to scalars and to collections are told apart by the upper bit, as the objects
    /// are not numbered before all are known.
    static constexpr std::uint32_t collectionBit = 0x80000000u;

    struct Collection {
        CollectionKind kind;
        /// Of elements or entries.
        std::size_t count;
        std::size_t firstReference;
    };

    explicit Collections(ScalarTable& scalars) : m_scalars(scalars) {}

    /// False when the format has no such value, or it nests too deep or holds too much.
    bool takeUp(const Value& value);

    std::span<const Collection> collections() const { return m_collections; }
    /// A dictionary's are those of all its keys, then those of its values.
    std::span<const std::uint32_t> referencesOf(const Collection& collection) const;
    /// How many steps a walk over the value takes.
    std::uint64_t steps() const { return m_steps; }

private:
    /// A value that several places share, as it was taken up the first time.
    struct Shared {
        std::uint32_t reference;
        std::uint32_t height;
        std::uint64_t steps;
    };

    /// Stands for a value that is left out.
    static constexpr std::uint32_t noReference = UINT32_MAX;

    std::uint32_t referenceTo(const Value& value, std::uint32_t depth);
    std::uint32_t takeUpNew(const Value& value, std::uint32_t depth);
    std::uint32_t referenceToKey(const Key& key);
    std::uint32_t takeUpCollection(const Value& value, std::uint32_t depth);
    void collectElements(const Array& array, std::uint32_t depth);
    void collectEntries(const Dictionary& dictionary, std::uint32_t depth);
    void endArray(Collection& collection, std::size_t firstCollected);
    void endDictionary(Collection& collection, std::size_t firstCollected);

    ScalarTable& m_scalars;
    std::vector<Collection> m_collections;
    std::vector<std::uint32_t> m_references;
    /// Those of the collections that are being taken up; a dictionary's keys and values alternate.
    std::vector<std::uint32_t> m_collected;
    std::unordered_map<const void*, Shared> m_shared;
    std::array<std::optional<ScalarTable::Added>, knownKeyCount> m_knownKeys;
    std::uint64_t m_steps = 0;
    std::uint32_t m_deepest = 0;
};

} // namespace plenzo::binary
