#pragma once

#include "propertylist/dictionary.h"

#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// The other system's name of a zone, in a dictionary with the names of one system as keys and
/// those of the other as values. Nothing when it has none.
[[nodiscard]] std::optional<std::string>
translateMacWindowsTimeZoneName(std::string_view name, const Dictionary& exchangeTimeZones);

} // namespace plenzo
