#include "host/configuration/configuration.h"

#include "host/files/file_text.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

constexpr std::size_t largestConfigurationBytes = 1 << 20;

std::string environmentText(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// The folder that the variable names, or that one in the home folder; empty when there is neither.
std::string userFolder(const char* variable, const char* folderInHome) {
    std::string named = environmentText(variable);
    if (named.starts_with('/')) { // XDG has relative ones ignored
        return named;
    }
    const std::string home = environmentText("HOME");
    return home.empty() ? std::string() : home + "/" + folderInHome;
}

bool exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

bool isBefore(const ConfigurationProblem& first, const ConfigurationProblem& second) {
    return first.place.line != second.place.line ? first.place.line < second.place.line
                                                 : first.place.column < second.place.column;
}

Configuration failed(std::string why) {
    Configuration configuration = defaultConfiguration();
    configuration.problems = {{{}, std::move(why)}};
    return configuration;
}

} // namespace

Configuration loadConfiguration(const std::string& path) {
    const FileText file = readFileText(path, largestConfigurationBytes);
    if (!file.error.empty()) {
        return failed(file.error);
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    Configuration configuration =
        readConfiguration(file.text, {environmentText("HOME"), absolute.parent_path().string()});
    for (const ConfiguredCalendar& calendar : configuration.calendars) {
        if (!exists(calendar.path)) {
            configuration.problems.push_back(
                {calendar.place, "there is no file or folder \"" + calendar.path + "\""});
        }
    }
    sortByPlace(configuration.problems);
    return configuration;
}

Configuration defaultConfiguration() {
    Configuration configuration = readConfiguration({}, {});
    ConfiguredCalendar calendar;
    calendar.path = defaultCalendarFolder();
    if (!calendar.path.empty() && exists(calendar.path)) {
        configuration.calendars.push_back(std::move(calendar));
    }
    return configuration;
}

std::string defaultCalendarFolder() {
    const std::string data = userFolder("XDG_DATA_HOME", ".local/share");
    return data.empty() ? data : data + "/calendars";
}

std::string defaultConfigurationPath() {
    const std::string folder = userFolder("XDG_CONFIG_HOME", ".config");
    return folder.empty() ? folder : folder + "/plenzohost/config.toml";
}

std::string configurationPath(const std::string& named) {
    const std::string usual = named.empty() ? defaultConfigurationPath() : std::string();
    return !usual.empty() && exists(usual) ? usual : named;
}

void sortByPlace(std::vector<ConfigurationProblem>& problems) {
    std::stable_sort(problems.begin(), problems.end(), isBefore);
}

std::string problemText(const std::string& path, const ConfigurationProblem& problem) {
    const TextPlace place = problem.place;
    const std::string where =
        place.line > 0 ? ":" + std::to_string(place.line) + ":" + std::to_string(place.column) : "";
    return path + where + ": " + problem.text;
}

} // namespace plenzo
