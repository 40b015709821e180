#include "linux/regional_settings_of_system.h"

#include "linux/environment.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace plenzo {

namespace {

constexpr std::size_t longestLocaleLength = 64;

std::string zoneNameOfEnvironment() {
    std::string name = environment("TZ");
    if (name.starts_with(':')) {
        name.erase(0, 1);
    }
    return name.starts_with('/') ? zoneNameOfPath(name) : name;
}

std::string zoneNameOfLink(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? std::string() : zoneNameOfPath(target.string());
}

std::optional<TimeZone> zoneNamed(const std::string& name) {
    return name.empty() ? std::nullopt : TimeZone::named(name);
}

/// The last one counts, as in a file of assignments.
std::string valueOf(std::string_view variable, const std::vector<std::string>& assignments) {
    std::string value;
    for (const std::string& assignment : assignments) {
        const std::size_t equals = assignment.find('=');
        if (equals != std::string::npos && assignment.compare(0, equals, variable) == 0) {
            value = assignment.substr(equals + 1);
        }
    }
    return value;
}

bool canBeLocale(const std::string& posixLocale) {
    return !posixLocale.empty() && posixLocale.size() <= longestLocaleLength &&
           std::all_of(posixLocale.begin(), posixLocale.end(), [](char character) {
               return (character >= 'a' && character <= 'z') ||
                      (character >= 'A' && character <= 'Z') ||
                      (character >= '0' && character <= '9') ||
                      std::string_view("_-.@").find(character) != std::string_view::npos;
           });
}

} // namespace

RegionalSettingsOfSystem::RegionalSettingsOfSystem(std::string localtimePath)
    : m_localtimePath(std::move(localtimePath)),
      m_locale(icuLocaleOfPosixLocale(firstSetInEnvironment({"LC_ALL", "LC_TIME", "LANG"}))) {
    const auto zone = zoneNamed(zoneNameOfEnvironment());
    m_isTimeZoneFixed = zone.has_value();
    m_timeZone =
        zone.value_or(zoneNamed(zoneNameOfLink(m_localtimePath)).value_or(TimeZone::universal()));
}

bool RegionalSettingsOfSystem::readLocaltimeAgain() {
    return !m_isTimeZoneFixed && setTimeZoneName(zoneNameOfLink(m_localtimePath));
}

bool RegionalSettingsOfSystem::setTimeZoneName(const std::string& name) {
    const auto zone = m_isTimeZoneFixed ? std::nullopt : zoneNamed(name);
    if (!zone || *zone == m_timeZone) {
        return false;
    }
    m_timeZone = *zone;
    return true;
}

bool RegionalSettingsOfSystem::setSystemLocale(const std::vector<std::string>& assignments) {
    if (!environment("LC_ALL").empty()) {
        return false;
    }
    const std::string times = valueOf("LC_TIME", assignments);
    return setLocale(times.empty() ? valueOf("LANG", assignments) : times);
}

bool RegionalSettingsOfSystem::setLocale(const std::string& posixLocale) {
    const std::string locale = icuLocaleOfPosixLocale(posixLocale);
    if (!canBeLocale(posixLocale) || locale == m_locale) {
        return false;
    }
    m_locale = locale;
    return true;
}

std::string zoneNameOfPath(const std::string& path) {
    static const std::string database = "/zoneinfo/";
    const auto position = path.rfind(database);
    if (position == std::string::npos) {
        return {};
    }
    std::string name = path.substr(position + database.size());
    for (const std::string variant : {"posix/", "right/"}) {
        if (name.starts_with(variant)) {
            name.erase(0, variant.size());
        }
    }
    return name;
}

std::string icuLocaleOfPosixLocale(const std::string& posixLocale) {
    const std::string name = posixLocale.substr(0, posixLocale.find_first_of(".@"));
    return name.empty() || name == "C" || name == "POSIX" ? "en_US" : name;
}

} // namespace plenzo
