#include "dates/date_components.h"

#include <string_view>

namespace plenzo {

namespace {

bool isDefined(std::int64_t component) {
    return component != undefinedComponent;
}

/// With at least so many characters, the sign among them.
std::string padded(std::int64_t component, std::size_t width) {
    std::string digits = std::to_string(component);
    if (digits.size() < width) {
        digits.insert(component < 0 ? 1 : 0, width - digits.size(), '0');
    }
    return digits;
}

} // namespace

DateComponents DateComponents::fromFields(const DateFields& fields) {
    DateComponents components;
    components.year = fields.year;
    components.month = fields.month;
    components.day = fields.day;
    components.hour = fields.hour;
    components.minute = fields.minute;
    components.second = fields.second;
    return components;
}

std::string DateComponents::description() const {
    struct Part {
        std::string_view before;
        std::int64_t component;
        std::size_t width;
        std::string_view after;
    };
    const Part parts[] = {
        {"", weekOfYear, 1, "-"}, {"", month, 1, ""},   {"/", day, 1, ""},    {"/", year, 1, ""},
        {" ", hour, 2, ""},       {":", minute, 2, ""}, {":", second, 2, ""},
    };
    std::string text;
    for (const Part& part : parts) {
        if (isDefined(part.component)) {
            text.append(part.before).append(padded(part.component, part.width)).append(part.after);
        }
    }
    return text;
}

} // namespace plenzo
