#pragma once

#include "host/store/file_grace.h"

#include <optional>
#include <string>

namespace plenzo {

/// Bears with a configuration that is away, or empty, for less than five seconds: editors put the
/// new file into the place of the old one in several steps, and without calendars every alarm would
/// be taken back.
class ConfigurationGrace {
public:
    /// Whether the configuration still counts as it was, whatever the file is now.
    bool bears(const std::string& file, SteadyTime now);

    /// When the file is to be looked at again, while that holds.
    [[nodiscard]] std::optional<SteadyTime> end() const { return m_end; }

private:
    bool m_wasThere = false;
    std::optional<SteadyTime> m_end;
};

} // namespace plenzo
