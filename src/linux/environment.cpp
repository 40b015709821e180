#include "linux/environment.h"

#include <cstdlib>

namespace plenzo {

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr ? value : std::string();
}

std::string firstSetInEnvironment(std::initializer_list<const char*> variables) {
    for (const char* variable : variables) {
        if (auto value = environment(variable); !value.empty()) {
            return value;
        }
    }
    return {};
}

} // namespace plenzo
