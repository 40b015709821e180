#pragma once

#include "propertylist/binary_objects.h"
#include "propertylist/binary_recent_objects.h"
#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

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

    explicit ScalarTable(Objects& objects) : m_objects(objects) {}

    /// Of a value that the format has and that is no collection.
    Added add(const Value& value);
    Added addText(std::string_view text);

private:
    /// The number of the object that begins at this offset and ends the output, or that of its
    /// earlier twin in its stead.
    std::uint32_t unique(std::size_t offset, RecentObjects& recent);

    Objects& m_objects;
    RecentObjects m_recentTexts{1 << 17};
    /// Apart, as most dates never recur.
    RecentObjects m_recentNumbers{1 << 11};
};

} // namespace plenzo::binary
