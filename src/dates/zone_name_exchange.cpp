#include "dates/zone_name_exchange.h"

namespace plenzo {

std::optional<std::string> translateMacWindowsTimeZoneName(std::string_view name,
                                                           const Dictionary& exchangeTimeZones) {
    const auto translated = exchangeTimeZones.stringForKey(name);
    return translated ? std::optional(std::string(*translated)) : std::nullopt;
}

} // namespace plenzo
