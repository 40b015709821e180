#pragma once

#include "propertylist/binary_output.h"
#include "propertylist/binary_recent_objects.h"
#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plenzo::binary {

/// The objects of a file that hold no others: what is added lands in the output, and goes again
/// when the same bytes are among the recent objects.
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
    /// The number of the object that begins at this offset and ends the output, or that of its
    /// earlier twin in its stead.
    std::uint32_t unique(std::size_t offset, RecentObjects& recent);

    Output& m_output;
    std::vector<std::uint64_t> m_offsets;
    RecentObjects m_recentTexts{1 << 17};
    /// Apart, as most dates never recur.
    RecentObjects m_recentNumbers{1 << 11};
};

} // namespace plenzo::binary
