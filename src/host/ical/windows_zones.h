#pragma once

#include <string>
#include <string_view>

namespace plenzo {

/// The name in the system's database of a zone as Windows names it ("W. Europe Standard Time" is
/// "Europe/Berlin"), by the table of Unicode CLDR; empty when it is none.
std::string systemNameOfWindowsZone(std::string_view name);

} // namespace plenzo
