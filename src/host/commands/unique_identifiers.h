#pragma once

#include <string>

namespace plenzo {

/// A random UUID (RFC 4122, version 4), as RFC 7986 recommends for UIDs.
std::string newUniqueIdentifier();

} // namespace plenzo
