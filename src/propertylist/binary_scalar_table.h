#pragma once

#include "propertylist/binary_output.h"
#include "propertylist/value.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plenzo::binary {

/// The objects of a file that hold no others: what is added lands in the output, and goes again
/// when the same bytes are there already. Texts and data are there once; numbers and dates, which
/// are as short as the search for them is long, are looked for among the recent ones only.
class ScalarTable {
public:
    struct Added {
        std::uint32_t number;
        /// What a walk takes for it.
        std::uint64_t steps;
    };

    /// The table writes to the end of the output, to which nobody else writes meanwhile.
    explicit ScalarTable(Output& output) : m_output(output) {}

    /// Of a value that the format has and that is no collection.
    Added add(const Value& value);
    Added addText(std::string_view text);

    /// Where each object begins.
    std::span<const std::uint64_t> offsets() const { return m_offsets; }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = freeNumber;
    };
    static constexpr std::uint32_t freeNumber = UINT32_MAX;

    std::uint32_t hashAndPrepare(const void* bytes, std::size_t size);
    /// The number of the object that begins at this offset and ends the output, or that of its
    /// earlier twin in its stead.
    std::uint32_t unique(std::size_t offset, std::uint32_t hash);
    std::uint32_t uniqueAmongRecent(std::size_t offset);
    std::uint32_t keep(std::size_t offset);
    bool isTwin(std::uint32_t number, std::span<const std::byte> bytes) const;
    void growSlots();
    void put(Slot slot);

    Output& m_output;
    std::vector<std::uint64_t> m_offsets;
    std::vector<Slot> m_slots;
    std::array<Slot, 2048> m_recent;
};

} // namespace plenzo::binary
