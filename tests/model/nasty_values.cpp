#include "model/nasty_values.h"

#include "dates/instant.h"
#include "propertylist/dictionary.h"
#include "propertylist/known_keys.h"
#include "support/instants.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace plenzo {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Value nested(int levels) {
    Value value = "the innermost";
    for (int level = 0; level < levels; ++level) {
        value = level % 2 == 0 ? Value(Array{std::move(value)})
                               : Value(Dictionary{{keys::rem, std::move(value)}});
    }
    return value;
}

Value bytes(std::size_t count) {
    return Value::fromData(std::vector<std::byte>(count));
}

} // namespace

const std::vector<Value>& nastyValues() {
    static const std::vector<Value> values{
        {},
        true,
        false,
        0,
        1,
        -1,
        3,
        10,
        INT64_MIN,
        INT64_MAX,
        UINT64_MAX,
        0.5,
        1e-310,
        1e300,
        -1e300,
        infinity,
        -infinity,
        notANumber,
        "",
        "-900",
        " 12.5 ",
        "1e400",
        "nan",
        "2026-03-10T12:00:00Z",
        "\xff\xfe\x80",
        "a\xc3",
        "\xed\xa0\x80",
        std::string("a\0b", 3),
        std::string(1 << 16, 'x'),
        std::string(1 << 16, '\xff'),
        Date{0},
        utc(0, 1, 1).date(),
        utc(300000, 12, 31).date(),
        Date{Instant::furthestReadableSeconds},
        Date{-Instant::furthestReadableSeconds},
        Date{std::nextafter(Instant::furthestReadableSeconds, infinity)},
        Date{1e300},
        Date{-1e300},
        Date{infinity},
        Date{-infinity},
        Date{notANumber},
        Color{1, 2, 3, 4},
        bytes(0),
        bytes(5000),
        Array(),
        Array{1, "two", Date{3}, Array(), Dictionary()},
        Dictionary(),
        Dictionary{{keys::uid, 5}, {keys::abs, "now"}, {keys::rem, Array{Dictionary()}}},
        nested(500),
    };
    return values;
}

} // namespace plenzo
