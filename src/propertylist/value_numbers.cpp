// The conversions of values to booleans and numbers.

#include "propertylist/spelled_number.h"
#include "propertylist/value.h"

#include <cmath>
#include <limits>
#include <utility>
#include <variant>

namespace plenzo {

namespace {

/// Truncated toward zero and saturating; NaN is 0.
template <typename Integer>
Integer saturated(double number) {
    // The first double above the range, which itself may not be a double.
    const double limit = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    if (std::isnan(number))
        return 0;
    if (number >= limit)
        return std::numeric_limits<Integer>::max();
    if (number <= static_cast<double>(std::numeric_limits<Integer>::min()))
        return std::numeric_limits<Integer>::min();
    return static_cast<Integer>(number);
}

template <typename Integer, typename Number>
Integer clamped(Number number) {
    if (std::in_range<Integer>(number))
        return static_cast<Integer>(number);
    return std::cmp_less(number, 0) ? std::numeric_limits<Integer>::min()
                                    : std::numeric_limits<Integer>::max();
}

} // namespace

template <typename Visitor>
auto Value::visitNumber(Visitor visitor) const {
    switch (m_cell.kind) {
    case Kind::Integer:
        return visitor(m_cell.load<std::int64_t>());
    case Kind::LargeUnsigned:
        return visitor(m_cell.load<std::uint64_t>());
    case Kind::Real:
        return visitor(m_cell.load<double>());
    case Kind::Boolean:
        return visitor(std::int64_t{m_cell.load<bool>()});
    case Kind::ShortString:
    case Kind::LongString:
        return std::visit(visitor, spelledNumber(text()));
    default:
        return visitor(std::monostate());
    }
}

namespace {

struct ToBoolean {
    bool operator()(std::monostate) const { return false; }
    bool operator()(double number) const { return number != 0 && !std::isnan(number); }
    bool operator()(std::integral auto number) const { return number != 0; }
};

template <typename Integer>
struct ToInteger {
    Integer operator()(std::monostate) const { return 0; }
    Integer operator()(double number) const { return saturated<Integer>(number); }
    Integer operator()(std::integral auto number) const { return clamped<Integer>(number); }
};

struct ToDouble {
    double operator()(std::monostate) const { return 0; }
    double operator()(double number) const { return number; }
    double operator()(std::integral auto number) const { return static_cast<double>(number); }
};

} // namespace

bool Value::boolValue() const {
    return visitNumber(ToBoolean());
}

std::int64_t Value::integerValue() const {
    return visitNumber(ToInteger<std::int64_t>());
}

std::uint64_t Value::unsignedIntegerValue() const {
    return visitNumber(ToInteger<std::uint64_t>());
}

double Value::doubleValue() const {
    return visitNumber(ToDouble());
}

} // namespace plenzo
