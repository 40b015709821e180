#pragma once

#include <compare>
#include <cstdint>

namespace plenzo {

/// A point in time, in seconds since 2001-01-01 00:00:00 UTC. May be NaN or infinite when it came
/// from outside.
struct Date {
    double secondsSinceReferenceDate = 0;

    friend auto operator<=>(const Date&, const Date&) = default;
};

/// A colour, each part 0 to 255. The agent keeps it in its own copies; no file ever holds one.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    friend bool operator==(const Color&, const Color&) = default;
};

enum class ValueType : std::uint8_t {
    Nothing,
    String,
    Integer,
    Real,
    Boolean,
    Date,
    Data,
    Array,
    Dictionary,
    Color
};

} // namespace plenzo
