// Reads whatever bytes come as a weather file. Each problem must have a place in the text, and a
// record must hold nothing but whole forecasts.

#include "host/weather/json_text.h"
#include "host/weather/weather_file.h"
#include "propertylist/array.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace plenzo;

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

/// Values lie in the order of the text, inside it and outside of each other.
std::size_t requireOrder(const JsonValue& value, std::size_t from, std::size_t size) {
    require(value.offset >= from && value.offset < size);
    std::size_t next = value.offset + 1;
    for (const JsonMember& member : value.members) {
        next = requireOrder(member.value, next, size);
    }
    return next;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (const JsonText json = readJson(text); json.root) {
        requireOrder(*json.root, 0, size);
    }
    const WeatherReading reading = readWeather(text, CalendarZone());
    require(reading.record || !reading.problems.empty());
    const TextPlace end = placeInText(text, size);
    for (const ConfigurationProblem& problem : reading.problems) {
        require(problem.place.line > 0 && problem.place.column > 0);
        require(problem.place.line <= end.line && problem.text.size() < 300);
    }
    if (reading.record) {
        for (const Value& forecast : *reading.record->arrayForKey("forecast")) {
            require(forecast.dictionary()->dateForKey("date").has_value());
            require(forecast.dictionary()->contains("high"));
        }
    }
    return 0;
}
