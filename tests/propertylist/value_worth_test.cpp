#include "propertylist/dictionary.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace plenzo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Conversion {
    Value value;
    bool boolean;
    std::int64_t integer;
    double real;
};

TEST(AValue, ConvertsNumbersAndTheNumbersThatStringsSpell) {
    const Conversion conversions[] = {
        {0, false, 0, 0},
        {-7, true, -7, -7},
        {INT64_MIN, true, INT64_MIN, -0x1p63},
        {UINT64_MAX, true, INT64_MAX, 0x1p64},
        {2.9, true, 2, 2.9},
        {-2.9, true, -2, -2.9},
        {0.25, true, 0, 0.25},
        {1e300, true, INT64_MAX, 1e300},
        {-infinity, true, INT64_MIN, -infinity},
        {0x1p63, true, INT64_MAX, 0x1p63},
        {true, true, 1, 1},
        {false, false, 0, 0},
        {"42", true, 42, 42},
        {" -42\n", true, -42, -42},
        {"+42", true, 42, 42},
        {"0.0", false, 0, 0},
        {"1e3", true, 1000, 1000},
        {"-2.5E-1", true, 0, -0.25},
        {"9007199254740993", true, 9007199254740993, 9007199254740992},
        {"18446744073709551615", true, INT64_MAX, 0x1p64},
        {"99999999999999999999", true, INT64_MAX, 1e20},
        {"00000000000000000000000000000007", true, 7, 7},
    };
    for (const Conversion& row : conversions) {
        SCOPED_TRACE(row.real);
        EXPECT_EQ(row.value.boolValue(), row.boolean);
        EXPECT_EQ(row.value.integerValue(), row.integer);
        EXPECT_EQ(row.value.doubleValue(), row.real);
    }
}

TEST(AValue, IsFalseAndZeroWhenItIsNoNumber) {
    const Value values[] = {Value(),  "",
                            "  ",     "12 apples",
                            "0x10",   "inf",
                            "nan",    "1e999",
                            "+-3",    "--3",
                            "1,5",    "yes",
                            Date{5},  Color{1},
                            Array{1}, Dictionary{{"a", 1}},
                            "٣",      Value::fromData(std::as_bytes(std::span("1")))};
    for (const Value& value : values) {
        SCOPED_TRACE(value.string().value_or("no string"));
        EXPECT_FALSE(value.boolValue());
        EXPECT_EQ(value.integerValue(), 0);
        EXPECT_EQ(value.unsignedIntegerValue(), 0u);
        EXPECT_EQ(value.doubleValue(), 0);
    }
}

TEST(AValue, ReadsNaNAsFalseAndZero) {
    EXPECT_FALSE(Value(notANumber).boolValue());
    EXPECT_EQ(Value(notANumber).integerValue(), 0);
    EXPECT_TRUE(std::isnan(Value(notANumber).doubleValue()));
}

TEST(AValue, KeepsUnsignedIntegersUpToTheLast) {
    EXPECT_EQ(Value(UINT64_MAX).unsignedIntegerValue(), UINT64_MAX);
    EXPECT_EQ(Value(std::uint64_t{INT64_MAX} + 1).unsignedIntegerValue(), 0x8000000000000000u);
    EXPECT_EQ(Value(-1).unsignedIntegerValue(), 0u);
    EXPECT_EQ(Value(0x1p64).unsignedIntegerValue(), UINT64_MAX);
    EXPECT_EQ(Value("18446744073709551615").unsignedIntegerValue(), UINT64_MAX);
}

TEST(AValue, IsEqualByWorth) {
    const std::pair<Value, Value> pairs[] = {
        {1, 1.0},
        {-0.0, 0},
        {notANumber, -notANumber},
        {Date{notANumber}, Date{notANumber}},
        {UINT64_MAX, UINT64_MAX},
        {-0x1p63, INT64_MIN},
        {Dictionary{{"a", 1}, {"b", Array{2}}}, Dictionary{{"b", Array{2.0}}, {"a", 1}}},
        {Array{Array{}, Dictionary{}}, Array{Array{}, Dictionary{}}},
        {"a string that is longer than a cell", "a string that is longer than a cell"},
    };
    for (const auto& [left, right] : pairs) {
        EXPECT_EQ(left, right);
        EXPECT_EQ(right, left);
    }
}

TEST(AValue, IsUnequalToWhatIsNearIt) {
    const std::pair<Value, Value> pairs[] = {
        {1, true},
        {0, Value()},
        {0, false},
        {1, "1"},
        {1, Date{1}},
        {-1, UINT64_MAX},
        {UINT64_MAX, 0x1p64},
        {INT64_MAX, 0x1p63},
        {INT64_MIN, -0x1p64},
        {9007199254740993, 9007199254740992.0},
        {1, infinity},
        {1, notANumber},
        {"", Array{}},
        {Array{}, Dictionary{}},
        {Array{1}, Array{1, 1}},
        {Array{1, 2}, Array{2, 1}},
        {Dictionary{{"a", 1}}, Dictionary{{"b", 1}}},
        {Dictionary{{"a", 1}}, Dictionary{{"a", 1}, {"b", Value()}}},
        {Dictionary{{"uid", 1}, {"title", 2}}, Dictionary{{"uid", 2}, {"title", 1}}},
        {Array{Dictionary{{"a", Array{1}}}}, Array{Dictionary{{"a", Array{2}}}}},
        {Color{1, 2, 3, 4}, Color{1, 2, 3, 5}},
        {"a string that is longer than a cell", "a string that is longer than a call"},
    };
    for (const auto& [left, right] : pairs) {
        EXPECT_NE(left, right);
        EXPECT_NE(right, left);
    }
}

} // namespace
} // namespace plenzo
