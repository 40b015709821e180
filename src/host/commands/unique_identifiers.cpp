#include "host/commands/unique_identifiers.h"

#include <glib.h>

#include <memory>

namespace plenzo {

std::string newUniqueIdentifier() {
    const std::unique_ptr<char, decltype(&g_free)> text(g_uuid_string_random(), g_free);
    return text.get();
}

} // namespace plenzo
