#include "host/configuration/duration_text.h"

#include <charconv>

namespace plenzo {

namespace {

constexpr std::int64_t mostSeconds = 864'000;

struct NamedLength {
    std::string_view name;
    std::int64_t seconds;
};

constexpr NamedLength units[] = {
    {"s", 1},       {"sec", 1},      {"second", 1},    {"seconds", 1}, {"min", 60},
    {"minute", 60}, {"minutes", 60}, {"h", 3600},      {"hour", 3600}, {"hours", 3600},
    {"d", 86'400},  {"day", 86'400}, {"days", 86'400},
};

std::optional<std::int64_t> unitSeconds(std::string_view name) {
    for (const NamedLength& unit : units) {
        if (unit.name == name) {
            return unit.seconds;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> secondsOfDurationText(std::string_view text) {
    constexpr std::string_view before = " before start";
    const bool isBefore = text.ends_with(before);
    text.remove_suffix(isBefore ? before.size() : 0);
    std::int64_t count = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, count);
    std::string_view unit(stop, static_cast<std::size_t>(end - stop));
    unit.remove_prefix(unit.starts_with(' ') ? 1 : 0);
    const auto each = unitSeconds(unit);
    if (error != std::errc() || !each || count < 0 || count > mostSeconds / *each) {
        return std::nullopt;
    }
    return isBefore ? -count * *each : count * *each;
}

} // namespace plenzo
