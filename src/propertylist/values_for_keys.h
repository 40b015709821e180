#pragma once

#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace plenzo {

/// The values of these known keys, in this order, null where absent: in one walk over the entries
/// where a lookup of each would be a walk of its own. Points into the dictionary.
///
///     const auto [date, end] =
///         valuesForKeys<keys::numbers::date, keys::numbers::end>(eventDict);
template <keys::numbers::KnownKeyNumber... numbers>
std::array<const Value*, sizeof...(numbers)> valuesForKeys(const Dictionary& dictionary) {
    constexpr std::size_t count = sizeof...(numbers);
    constexpr auto placeOfNumber = [] {
        std::array<std::uint8_t, knownKeyCount> places{};
        places.fill(count); // what nobody asked for
        std::uint8_t place = 0;
        ((places[numbers] = place++), ...);
        return places;
    }();
    if (dictionary.isIndexed())
        return {dictionary.find(Key(knownKeyNames + numbers))...};
    std::array<const Value*, count + 1> found{};
    for (const Dictionary::Entry& entry : dictionary) {
        if (entry.key.isKnown())
            found[placeOfNumber[entry.key.knownNumber()]] = &entry.value;
    }
    std::array<const Value*, count> values{};
    for (std::size_t place = 0; place < count; ++place)
        values[place] = found[place];
    return values;
}

} // namespace plenzo
