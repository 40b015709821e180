#pragma once

#include "platform/regional_settings.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// The zone and the locale of the system, kept up to date by whoever learns of a change.
///
/// The zone is that of TZ, which the user has set for this program and which nothing changes then;
/// without it, of /etc/localtime. The locale is that of LC_ALL, LC_TIME or LANG. LC_ALL stays for
/// the same reason as TZ, since no system setting brings it about; LC_TIME and LANG are copies of
/// the system's locale, made when the user logged in, so a later change of that wins over them.
class RegionalSettingsOfSystem final : public RegionalSettings {
public:
    explicit RegionalSettingsOfSystem(std::string localtimePath = "/etc/localtime");

    [[nodiscard]] TimeZone timeZone() const override { return m_timeZone; }
    [[nodiscard]] std::string locale() const override { return m_locale; }

    /// A link to a file of the zone data.
    [[nodiscard]] const std::string& localtimePath() const { return m_localtimePath; }

    /// Each of these says whether anything is different now; what cannot be used changes nothing.
    bool readLocaltimeAgain();
    bool setTimeZoneName(const std::string& name);
    /// The locale that the system now gives to who logs in: "LANG=de_DE.UTF-8", "LC_TIME=…".
    bool setSystemLocale(const std::vector<std::string>& assignments);

private:
    bool setLocale(const std::string& posixLocale);

    std::string m_localtimePath;
    bool m_isTimeZoneFixed = false;
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
