#pragma once

#include "propertylist/dictionary.h"

#include <cstdint>
#include <random>
#include <string>

namespace plenzo {

/// Values and damage by chance, the same for the same seed everywhere.
class RandomValues {
public:
    explicit RandomValues(std::uint32_t seed) : m_random(seed) {}

    /// An array or a dictionary with a few levels in it.
    Value collection(int levels = 4);
    /// A few bytes of the file set, removed, doubled or exchanged; mostly in its trailer, its
    /// offset table and its markers, by the way such files are small.
    std::string damaged(std::string file);

private:
    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(m_random() % limit);
    }
    Value value(int levels);
    Value number();
    Value data();
    std::string text();

    std::mt19937 m_random;
};

} // namespace plenzo
