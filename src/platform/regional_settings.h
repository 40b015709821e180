#pragma once

#include "dates/time_zone.h"

#include <string>

namespace plenzo {

/// The user's time zone and language, as the system has them set at the moment.
class RegionalSettings {
public:
    RegionalSettings() = default;
    RegionalSettings(const RegionalSettings&) = delete;
    RegionalSettings& operator=(const RegionalSettings&) = delete;
    virtual ~RegionalSettings() = default;

    [[nodiscard]] virtual TimeZone timeZone() const = 0;
    /// An ICU locale name such as "de_DE", for dates and the order of texts.
    [[nodiscard]] virtual std::string locale() const = 0;
};

} // namespace plenzo
