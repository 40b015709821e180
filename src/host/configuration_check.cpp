#include "host/configuration_check.h"

#include "host/configuration/configured_calendars.h"
#include "host/configuration/new_item_place.h"
#include "host/files/file_paths.h"
#include "host/store/calendar_folder.h"
#include "host/weather/weather_file.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <ostream>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

/// Looks at everything that one configuration names.
class ConfigurationCheck {
public:
    explicit ConfigurationCheck(Configuration configuration)
        : m_configuration(std::move(configuration)) {}

    void run() {
        checkPaths();
        m_set = loadConfiguredCalendars(m_readable);
        checkDefault();
        checkNames();
        checkWeather();
        sortByPlace(m_configuration.problems);
    }

    /// Whether there is nothing to write.
    bool write(const std::string& path, std::ostream& output) const {
        for (const ConfigurationProblem& problem : m_configuration.problems) {
            output << problemText(path, problem) << '\n';
        }
        for (const std::string& problem : m_set.problems) {
            output << problem << '\n';
        }
        for (const ConfigurationProblem& problem : m_weatherProblems) {
            output << problemText(m_configuration.weatherFile, problem) << '\n';
        }
        return m_configuration.problems.empty() && m_set.problems.empty() &&
               m_weatherProblems.empty();
    }

    std::size_t calendarCount() const { return m_set.calendars.size(); }

private:
    void addProblem(TextPlace place, std::string text) {
        m_configuration.problems.push_back({place, std::move(text)});
    }

    /// What cannot be read is named with its line here, and by nobody once more.
    void checkPaths() {
        std::map<std::string, int> lines;
        std::error_code error;
        for (const ConfiguredCalendar& calendar : m_configuration.calendars) {
            const auto [first, isNew] =
                lines.emplace(canonicalPath(calendar.path), calendar.place.line);
            if (!isNew) {
                addProblem(calendar.place, inQuotes(calendar.path) + " is named in line " +
                                               std::to_string(first->second) +
                                               " already, and shown as that says");
            } else if (fs::exists(calendar.path, error) && isReadable(calendar)) {
                m_readable.calendars.push_back(calendar);
            }
        }
    }

    bool isReadable(const ConfiguredCalendar& calendar) {
        std::error_code error;
        const bool isFolder = fs::is_directory(calendar.path, error);
        if (!isFolder && !fs::is_regular_file(calendar.path, error)) {
            addProblem(calendar.place, inQuotes(calendar.path) + " is neither a file nor a folder");
            return false;
        }
        if (access(calendar.path.c_str(), isFolder ? R_OK | X_OK : R_OK) != 0) {
            addProblem(calendar.place, inQuotes(calendar.path) + " must not be read");
            return false;
        }
        return !isFolder || holdsCalendars(calendar);
    }

    /// The default folder may be empty, for what is to come.
    bool holdsCalendars(const ConfiguredCalendar& calendar) {
        const CalendarPaths paths = calendarPathsOf(calendar.path);
        if (std::any_of(paths.folders.begin(), paths.folders.end(),
                        [](const CalendarFolder& folder) { return !folder.files.empty(); })) {
            return true;
        }
        if (!calendar.isDefault) {
            addProblem(calendar.place, "neither the folder " + inQuotes(calendar.path) +
                                           " nor a folder in it holds an .ics file");
        }
        return false;
    }

    void checkDefault() {
        const auto& calendars = m_configuration.calendars;
        const auto chosen =
            std::find_if(calendars.begin(), calendars.end(),
                         [](const ConfiguredCalendar& each) { return each.isDefault; });
        if (chosen == calendars.end() || chosen->isReadOnly) {
            return; // which was named where it was read
        }
        const NewItemPlace place = newItemPlace(calendars, m_set.calendars);
        std::error_code error;
        if (!place.error.empty()) {
            addProblem(chosen->defaultPlace, "new items cannot be written: " + place.error);
        } else if (fs::is_directory(chosen->path, error) &&
                   calendarsInFolder(chosen->path, m_set.calendars).size() > 1) {
            addProblem(chosen->defaultPlace,
                       "the default is a folder with several calendars; new items go to " +
                           inQuotes(place.path));
        }
    }

    void checkNames() {
        for (const ConfiguredCalendar& each : m_readable.calendars) {
            std::error_code error;
            const bool isForOne = each.title.empty() || !fs::is_directory(each.path, error) ||
                                  calendarsInFolder(each.path, m_set.calendars).size() < 2;
            if (!isForOne) {
                addProblem(each.place,
                           "the folder holds several calendars, which keep their names: " +
                               inQuotes(each.title) + " is not used");
            }
        }
    }

    void checkWeather() {
        const std::string& path = m_configuration.weatherFile;
        if (path.empty()) {
            return;
        }
        m_weatherProblems = loadWeather(path, CalendarZone()).problems;
        if (!m_weatherProblems.empty() && m_weatherProblems.front().place.line == 0) {
            addProblem(m_configuration.weatherPlace,
                       inQuotes(path) + ": " + m_weatherProblems.front().text);
            m_weatherProblems.clear();
        }
    }

    Configuration m_configuration;
    Configuration m_readable; // its calendars that can be read
    CalendarSet m_set;
    std::vector<ConfigurationProblem> m_weatherProblems;
};

} // namespace

bool checkConfiguration(const std::string& path, std::ostream& output) {
    ConfigurationCheck check(path.empty() ? defaultConfiguration() : loadConfiguration(path));
    check.run();
    const bool isGood = check.write(path, output);
    if (isGood) {
        output << (path.empty() ? "no configuration" : path)
               << ": nothing is wrong; calendars: " << check.calendarCount() << '\n';
    }
    return isGood;
}

} // namespace plenzo
