#include "host/configured_calendars.h"

#include <filesystem>
#include <iterator>
#include <ostream>
#include <set>
#include <system_error>

namespace plenzo {

namespace {

void dress(Calendar& calendar, const ConfiguredCalendar& configured, bool isOnly) {
    calendar.isReadOnly = calendar.isReadOnly || configured.isReadOnly;
    calendar.color = configured.color.value_or(calendar.color);
    if (isOnly && !configured.title.empty()) {
        calendar.title = configured.title;
    }
}

bool exists(const ConfiguredCalendar& calendar) {
    std::error_code error;
    return std::filesystem::exists(calendar.path, error);
}

} // namespace

CalendarSet loadConfiguredCalendars(const Configuration& configuration) {
    CalendarSet all;
    std::set<std::string> known;
    for (const ConfiguredCalendar& configured : configuration.calendars) {
        CalendarSet set = loadCalendars({configured.path});
        for (Calendar& calendar : set.calendars) {
            if (known.insert(calendar.uid).second) {
                dress(calendar, configured, set.calendars.size() == 1);
                all.calendars.push_back(std::move(calendar));
            }
        }
        std::move(set.problems.begin(), set.problems.end(), std::back_inserter(all.problems));
    }
    return all;
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
