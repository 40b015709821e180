#pragma once

#include "platform/regional_settings.h"

namespace plenzo {

/// The zone of TZ or /etc/localtime and the locale of LC_ALL, LC_TIME or LANG, as they stood when
/// this object was made.
class RegionalSettingsOfSystem final : public RegionalSettings {
public:
    RegionalSettingsOfSystem();

    [[nodiscard]] TimeZone timeZone() const override { return m_timeZone; }
    [[nodiscard]] std::string locale() const override { return m_locale; }

private:
    TimeZone m_timeZone;
    std::string m_locale;
};

/// The name of the zone that a link to a compiled zone file stands for ("Europe/Berlin" for
/// "/usr/share/zoneinfo/Europe/Berlin"). Empty when the path has no zone database in it.
[[nodiscard]] std::string zoneNameOfPath(const std::string& path);

/// The ICU name of a POSIX locale: "de_DE" of "de_DE.UTF-8@euro"; "en_US" of "C", "POSIX" and the
/// empty name.
[[nodiscard]] std::string icuLocaleOfPosixLocale(const std::string& posixLocale);

} // namespace plenzo
