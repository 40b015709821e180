#pragma once

#include "host/configuration/configuration.h"
#include "host/ical/calendar_zone.h"
#include "propertylist/dictionary.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// The weather for the agent, and what is wrong with it.
struct WeatherReading {
    std::optional<Dictionary> record; // nothing when there is none to be had
    std::vector<ConfigurationProblem> problems;
};

/// Reads JSON in the shape of the agent's weather record; plenzohost.toml(5) describes it. A
/// forecast without a date, a high or a low is left out, and any other value of a wrong kind too;
/// null counts as not there. A text that is no JSON, or has no array of forecasts, is no record. A
/// day without a time counts as its noon in the zone.
WeatherReading readWeather(std::string_view text, const CalendarZone& zone);

/// Reads the file, of 1 MiB at most. One that does not exist gives an empty record, which is that
/// there is no weather, and a problem.
WeatherReading loadWeather(const std::string& path, const CalendarZone& zone);

} // namespace plenzo
