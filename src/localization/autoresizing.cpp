#include "localization/autoresizing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace plenzo {

namespace {

constexpr std::pair<std::string_view, unsigned> partNames[] = {
    {"leftMargin", AutoresizingMask::leftMargin},
    {"width", AutoresizingMask::width},
    {"rightMargin", AutoresizingMask::rightMargin},
    {"topMargin", AutoresizingMask::topMargin},
    {"height", AutoresizingMask::height},
    {"bottomMargin", AutoresizingMask::bottomMargin}};

constexpr std::string_view blanks = " \t\r\n";

unsigned partNamed(std::string_view word) {
    const auto* const part =
        std::ranges::find(partNames, word, &std::pair<std::string_view, unsigned>::first);
    return part != std::end(partNames) ? part->second : 0;
}

struct Span {
    int start;
    int length;
};

/// A margin, a view and a margin in a row, and how far each of them gives way.
struct Parts {
    std::int64_t before;
    std::int64_t length;
    std::int64_t after;
};

std::int64_t roundedQuotient(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t doubled = 2 * dividend + divisor;
    const std::int64_t quotient = doubled / (2 * divisor);
    return quotient - (doubled % (2 * divisor) < 0 ? 1 : 0);
}

/// The flexible parts' weights; those of empty parts alone are equal.
Parts weights(const Parts& designed, const Parts& isFlexible) {
    const Parts weighed{isFlexible.before * std::max<std::int64_t>(designed.before, 0),
                        isFlexible.length * std::max<std::int64_t>(designed.length, 0),
                        isFlexible.after * std::max<std::int64_t>(designed.after, 0)};
    return weighed.before + weighed.length + weighed.after > 0 ? weighed : isFlexible;
}

Span resized(const Span& designed, int designedFor, int now, const Parts& isFlexible) {
    const Parts parts{designed.start, designed.length,
                      std::int64_t{designedFor} - designed.start - designed.length};
    const Parts weight = weights(parts, isFlexible);
    const std::int64_t total = weight.before + weight.length + weight.after;
    if (total == 0) {
        return designed;
    }
    const std::int64_t difference = std::int64_t{now} - designedFor;
    const std::int64_t start = designed.start + roundedQuotient(difference * weight.before, total);
    const std::int64_t end = designed.start + designed.length +
                             roundedQuotient(difference * (weight.before + weight.length), total);
    // What is not flexible keeps its length where both edges move by a fraction.
    const std::int64_t length =
        isFlexible.length != 0 ? std::max<std::int64_t>(end - start, 0) : designed.length;
    return {static_cast<int>(start), static_cast<int>(length)};
}

} // namespace

AutoresizingMask autoresizingMask(std::string_view words) {
    AutoresizingMask mask;
    while (true) {
        words.remove_prefix(std::min(words.find_first_not_of(blanks), words.size()));
        if (words.empty()) {
            return mask;
        }
        const std::size_t length = std::min(words.find_first_of(blanks), words.size());
        mask.flexible |= partNamed(words.substr(0, length));
        words.remove_prefix(length);
    }
}

Frame autoresized(const Frame& designed, FrameSize designedFor, FrameSize now,
                  AutoresizingMask mask) {
    using Mask = AutoresizingMask;
    const Span horizontal =
        resized({designed.x, designed.width}, designedFor.width, now.width,
                {mask.has(Mask::leftMargin), mask.has(Mask::width), mask.has(Mask::rightMargin)});
    const Span vertical =
        resized({designed.y, designed.height}, designedFor.height, now.height,
                {mask.has(Mask::topMargin), mask.has(Mask::height), mask.has(Mask::bottomMargin)});
    return {horizontal.start, vertical.start, horizontal.length, vertical.length};
}

} // namespace plenzo
