#include "host/configuration/configuration_grace.h"

#include <filesystem>
#include <system_error>

namespace plenzo {

bool ConfigurationGrace::bears(const std::string& file, SteadyTime now) {
    using namespace std::chrono_literals;
    std::error_code error;
    const bool isThere = std::filesystem::file_size(file, error) > 0 && !error;
    m_end = isThere || !m_wasThere ? std::nullopt : std::optional(m_end.value_or(now + 5s));
    const bool isBorneWith = m_end && now < *m_end;
    if (!isBorneWith) {
        m_wasThere = isThere;
        m_end.reset();
    }
    return isBorneWith;
}

} // namespace plenzo
