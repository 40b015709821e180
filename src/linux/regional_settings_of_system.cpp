#include "linux/regional_settings_of_system.h"

#include "linux/environment.h"

#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

std::string zoneNameOfEnvironment() {
    std::string name = environment("TZ");
    if (name.starts_with(':')) {
        name.erase(0, 1);
    }
    return name.starts_with('/') ? zoneNameOfPath(name) : name;
}

std::string zoneNameOfLocaltime() {
    std::error_code error;
    const auto target = std::filesystem::canonical("/etc/localtime", error);
    return error ? std::string() : zoneNameOfPath(target.string());
}

TimeZone systemTimeZone() {
    for (const auto& name : {zoneNameOfEnvironment(), zoneNameOfLocaltime()}) {
        const auto zone = name.empty() ? std::nullopt : TimeZone::named(name);
        if (zone) {
            return *zone;
        }
    }
    return TimeZone::universal();
}

} // namespace

RegionalSettingsOfSystem::RegionalSettingsOfSystem()
    : m_timeZone(systemTimeZone()),
      m_locale(icuLocaleOfPosixLocale(firstSetInEnvironment({"LC_ALL", "LC_TIME", "LANG"}))) {}

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
