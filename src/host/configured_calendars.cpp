#include "host/configured_calendars.h"

#include "host/store/calendar_store.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace plenzo {

namespace {

bool exists(const ConfiguredCalendar& calendar) {
    std::error_code error;
    return std::filesystem::exists(calendar.path, error);
}

} // namespace

std::vector<CalendarSource> configuredSources(const Configuration& configuration) {
    std::vector<CalendarSource> sources;
    for (const ConfiguredCalendar& calendar : configuration.calendars) {
        sources.push_back({{calendar.path}, calendar.title, calendar.color, calendar.isReadOnly});
    }
    return sources;
}

CalendarSet loadConfiguredCalendars(const Configuration& configuration) {
    CalendarStore store;
    store.setSources(configuredSources(configuration));
    store.update({});
    return store.calendars();
}

bool checkConfiguration(const std::string& path, std::ostream& output) {
    Configuration configuration = path.empty() ? defaultConfiguration() : loadConfiguration(path);
    for (const ConfigurationProblem& problem : configuration.problems) {
        output << problemText(path, problem) << '\n';
    }
    // A path that is missing was named with its line already.
    std::erase_if(configuration.calendars,
                  [](const ConfiguredCalendar& calendar) { return !exists(calendar); });
    const CalendarSet set = loadConfiguredCalendars(configuration);
    for (const std::string& problem : set.problems) {
        output << problem << '\n';
    }
    const bool isGood = configuration.problems.empty() && set.problems.empty();
    if (isGood) {
        output << (path.empty() ? "no configuration" : path)
               << ": nothing is wrong; calendars: " << set.calendars.size() << '\n';
    }
    return isGood;
}

} // namespace plenzo
