#include "host/weather/weather_file.h"

#include "host/files/file_text.h"
#include "host/records/agent_date.h"
#include "host/weather/json_text.h"
#include "host/weather/rfc3339_text.h"
#include "propertylist/array.h"
#include "propertylist/known_keys.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

constexpr std::size_t largestWeatherBytes = 1 << 20;
constexpr std::size_t mostProblems = 20;
constexpr cctz::diff_t noonSeconds = 43'200; // after midnight on the wall clock

/// Of the temperatures that a strip of the weather can show: they may be of any unit.
constexpr double largestTemperature = 1000;

enum class Wanted : std::uint8_t { Text, Temperature, Date };

/// A key of a forecast.
struct ForecastKey {
    Key key;
    Wanted wanted;
    bool isNeeded;
};

const ForecastKey forecastKeys[] = {{keys::date, Wanted::Date, true},
                                    {keys::high, Wanted::Temperature, true},
                                    {keys::low, Wanted::Temperature, true},
                                    {keys::icon, Wanted::Text, false},
                                    {keys::text, Wanted::Text, false}};

const char* nameOf(Wanted wanted) {
    switch (wanted) {
    case Wanted::Text:
        return "a text";
    case Wanted::Temperature:
        return "a number from -1000 to 1000";
    case Wanted::Date:
        break;
    }
    return "a text like \"2026-11-23\" or \"2026-11-23T09:00:00+01:00\"";
}

std::string inQuotes(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

Value dateFrom(std::string_view text, const CalendarZone& zone) {
    if (const auto day = dayFromRfc3339(text)) {
        return agentDate(zone.instantOf(cctz::civil_second(*day) + noonSeconds));
    }
    const auto instant = instantFromRfc3339(text);
    return instant ? Value(agentDate(*instant)) : Value();
}

/// Reads the record out of one text.
class WeatherReader {
public:
    WeatherReader(std::string_view text, const CalendarZone& zone) : m_text(text), m_zone(zone) {}

    WeatherReading read() {
        const JsonText json = readJson(m_text);
        m_result.problems = json.problems;
        if (json.root) {
            readRecord(*json.root);
        }
        sortByPlace(m_result.problems);
        return std::move(m_result);
    }

private:
    void addProblem(const JsonValue& value, std::string text) {
        if (m_result.problems.size() < mostProblems) {
            m_result.problems.push_back({placeInText(m_text, value.offset), std::move(text)});
        }
    }

    void addWrong(const JsonMember& member, const std::string& wanted) {
        addProblem(member.value, inQuotes(member.name) + " has to be " + wanted);
    }

    void readRecord(const JsonValue& root) {
        if (root.kind != JsonKind::Object) {
            addProblem(root, "the weather has to be an object: { ... }");
            return;
        }
        Dictionary record;
        for (const JsonMember& member : root.members) {
            if (member.value.kind != JsonKind::Null) {
                readRecordMember(member, record);
            }
        }
        if (record.arrayForKey(keys::forecast) != nullptr) {
            m_result.record = std::move(record);
        } else if (!m_hasForecast) {
            addProblem(root, "the weather has no \"forecast\"");
        }
    }

    void readRecordMember(const JsonMember& member, Dictionary& record) {
        if (member.name == keys::forecast.name()) {
            readForecasts(member, record);
        } else if (member.name == keys::location.name()) {
            setChecked(member, Wanted::Text, record);
        } else {
            record.set(member.name, member.value.propertyValue());
        }
    }

    void readForecasts(const JsonMember& member, Dictionary& record) {
        m_hasForecast = true;
        if (member.value.kind != JsonKind::Array) {
            addWrong(member, "an array: [ ... ]");
            return;
        }
        Array forecasts;
        for (const JsonMember& day : member.value.members) {
            if (auto forecast = readForecast(day.value)) {
                forecasts.append(std::move(*forecast));
            }
        }
        record.set(keys::forecast, std::move(forecasts));
    }

    std::optional<Dictionary> readForecast(const JsonValue& day) {
        if (day.kind != JsonKind::Object) {
            addProblem(day, "a forecast has to be an object: { ... }");
            return std::nullopt;
        }
        Dictionary forecast;
        for (const JsonMember& member : day.members) {
            if (member.value.kind != JsonKind::Null) {
                readForecastMember(member, forecast);
            }
        }
        return isComplete(day, forecast) ? std::optional(std::move(forecast)) : std::nullopt;
    }

    void readForecastMember(const JsonMember& member, Dictionary& forecast) {
        const auto* known =
            std::find_if(std::begin(forecastKeys), std::end(forecastKeys),
                         [&](const ForecastKey& each) { return each.key.name() == member.name; });
        if (known != std::end(forecastKeys)) {
            setChecked(member, known->wanted, forecast);
        } else {
            forecast.set(member.name, member.value.propertyValue());
        }
    }

    bool isComplete(const JsonValue& day, const Dictionary& forecast) {
        bool isComplete = true;
        for (const ForecastKey& each : forecastKeys) {
            if (each.isNeeded && !forecast.contains(each.key)) {
                isComplete = false;
                nameMissing(day, each.key.name());
            }
        }
        return isComplete;
    }

    /// A value that is there and wrong has been named.
    void nameMissing(const JsonValue& day, std::string_view name) {
        const bool isThere =
            std::any_of(day.members.begin(), day.members.end(), [&](const JsonMember& member) {
                return member.name == name && member.value.kind != JsonKind::Null;
            });
        if (!isThere) {
            addProblem(day, "the forecast has no " + inQuotes(name));
        }
    }

    void setChecked(const JsonMember& member, Wanted wanted, Dictionary& dictionary) {
        Value value = checked(member.value, wanted);
        if (value.isNothing()) {
            addWrong(member, nameOf(wanted));
            return;
        }
        dictionary.set(member.name, std::move(value));
    }

    /// Nothing when it is not what is wanted.
    Value checked(const JsonValue& value, Wanted wanted) const {
        if (wanted == Wanted::Temperature) {
            const bool isOne = value.kind == JsonKind::Number &&
                               value.scalar.doubleValue() >= -largestTemperature &&
                               value.scalar.doubleValue() <= largestTemperature;
            return isOne ? value.scalar : Value();
        }
        const auto text = value.scalar.string();
        if (!text) {
            return {};
        }
        return wanted == Wanted::Date ? dateFrom(*text, m_zone) : value.scalar;
    }

    std::string_view m_text;
    const CalendarZone& m_zone;
    WeatherReading m_result;
    bool m_hasForecast = false;
};

} // namespace

WeatherReading readWeather(std::string_view text, const CalendarZone& zone) {
    return WeatherReader(text, zone).read();
}

WeatherReading loadWeather(const std::string& path, const CalendarZone& zone) {
    const FileText file = readFileText(path, largestWeatherBytes);
    if (file.error.empty()) {
        return readWeather(file.text, zone);
    }
    std::error_code error;
    const bool isMissing = !std::filesystem::exists(path, error) && !error;
    return {isMissing ? std::optional(Dictionary()) : std::nullopt, {{{}, file.error}}};
}

} // namespace plenzo
