#include "model/event_dict.h"

namespace plenzo {

ReminderType reminderType(const Dictionary& reminderDict) {
    return static_cast<ReminderType>(reminderDict.integerForKey(keys::type));
}

Color colorFromPackedInteger(std::int64_t packed) {
    const auto bits = static_cast<std::uint64_t>(packed);
    const auto byteAt = [bits](unsigned shift) {
        return static_cast<std::uint8_t>((bits >> shift) & 0xFF);
    };
    return {.red = byteAt(16), .green = byteAt(8), .blue = byteAt(0), .alpha = 0xFF};
}

} // namespace plenzo
