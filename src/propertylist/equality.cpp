// Equality of values, arrays and dictionaries, at any depth of nesting in constant stack.

#include "propertylist/dictionary.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace plenzo {

namespace {

/// Compares pairs of collections, those found inside them last.
class Comparison {
public:
    bool areEqual(const Value& left, const Value& right);

private:
    /// False when they surely differ; collections are put off.
    bool mayBeEqual(const Value& left, const Value& right);
    bool elementsMayBeEqual(const Array& left, const Array& right);
    bool entriesMayBeEqual(const Dictionary& left, const Dictionary& right);

    struct Pair {
        const Value* left;
        const Value* right;
    };
    std::vector<Pair> m_pending;
};

bool bytesAreEqual(std::span<const std::byte> left, std::span<const std::byte> right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

bool isNumber(const Value& value) {
    return value.type() == ValueType::Integer || value.type() == ValueType::Real;
}

bool realsAreEqual(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// Exactly: above 2^53 not every integer is a double.
bool integerEqualsReal(const Value& integer, double real) {
    if (real != std::trunc(real) || real < -0x1p63 || real >= 0x1p64)
        return false;
    const Value whole =
        real < 0 ? Value(static_cast<std::int64_t>(real)) : Value(static_cast<std::uint64_t>(real));
    return whole == integer;
}

bool numbersAreEqual(const Value& left, const Value& right) {
    const bool leftIsReal = left.type() == ValueType::Real;
    const bool rightIsReal = right.type() == ValueType::Real;
    if (leftIsReal && rightIsReal)
        return realsAreEqual(left.doubleValue(), right.doubleValue());
    if (leftIsReal)
        return integerEqualsReal(right, left.doubleValue());
    if (rightIsReal)
        return integerEqualsReal(left, right.doubleValue());
    return left.integerValue() == right.integerValue() &&
           left.unsignedIntegerValue() == right.unsignedIntegerValue();
}

bool scalarsAreEqual(const Value& left, const Value& right) {
    switch (left.type()) {
    case ValueType::String:
        return left.string() == right.string();
    case ValueType::Boolean:
        return left.boolValue() == right.boolValue();
    case ValueType::Date:
        return realsAreEqual(left.date()->secondsSinceReferenceDate,
                             right.date()->secondsSinceReferenceDate);
    case ValueType::Data:
        return bytesAreEqual(*left.data(), *right.data());
    case ValueType::Color:
        return left.color() == right.color();
    default:
        return true;
    }
}

bool Comparison::mayBeEqual(const Value& left, const Value& right) {
    if (isNumber(left) && isNumber(right))
        return numbersAreEqual(left, right);
    if (left.type() != right.type())
        return false;
    if (left.type() != ValueType::Array && left.type() != ValueType::Dictionary)
        return scalarsAreEqual(left, right);
    m_pending.push_back({&left, &right});
    return true;
}

bool Comparison::areEqual(const Value& left, const Value& right) {
    if (!mayBeEqual(left, right))
        return false;
    while (!m_pending.empty()) {
        const Pair pair = m_pending.back();
        m_pending.pop_back();
        const Array* array = pair.left->array();
        if (array != nullptr
                ? !elementsMayBeEqual(*array, *pair.right->array())
                : !entriesMayBeEqual(*pair.left->dictionary(), *pair.right->dictionary()))
            return false;
    }
    return true;
}

bool Comparison::elementsMayBeEqual(const Array& left, const Array& right) {
    return left.begin() == right.begin() ||
           std::equal(
               left.begin(), left.end(), right.begin(), right.end(),
               [this](const Value& one, const Value& other) { return mayBeEqual(one, other); });
}

bool Comparison::entriesMayBeEqual(const Dictionary& left, const Dictionary& right) {
    if (left.begin() == right.begin())
        return true;
    return left.size() == right.size() &&
           std::all_of(left.begin(), left.end(), [&](const Dictionary::Entry& entry) {
               const Value* counterpart = right.find(entry.key);
               return counterpart != nullptr && mayBeEqual(entry.value, *counterpart);
           });
}

} // namespace

bool operator==(const Value& left, const Value& right) {
    return Comparison().areEqual(left, right);
}

bool operator==(const Array& left, const Array& right) {
    return Comparison().areEqual(left, right);
}

bool operator==(const Dictionary& left, const Dictionary& right) {
    return Comparison().areEqual(left, right);
}

} // namespace plenzo
