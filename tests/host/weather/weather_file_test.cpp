#include "host/records/agent_date.h"
#include "host/weather/json_text.h"
#include "host/weather/rfc3339_text.h"
#include "host/weather/weather_file.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace plenzo {

namespace {

constexpr const char* repository = PLENZO_TEST_DATA "/../..";

CalendarZone zoneNamed(const char* name) {
    cctz::time_zone zone;
    EXPECT_TRUE(cctz::load_time_zone(name, &zone)) << name;
    return CalendarZone(zone);
}

WeatherReading readIn(const char* zone, std::string_view text) {
    return readWeather(text, zoneNamed(zone));
}

WeatherReading readUtc(std::string_view text) {
    return readWeather(text, CalendarZone());
}

std::vector<std::string> problemsOf(const WeatherReading& reading) {
    std::vector<std::string> texts;
    for (const ConfigurationProblem& problem : reading.problems) {
        texts.push_back(problemText("w", problem));
    }
    return texts;
}

std::string forecastOf(const std::string& date) {
    return R"({"forecast": [{"date": )" + date + R"(, "high": 1, "low": 0}]})";
}

/// The moment of a record's only forecast, in the agent's seconds.
double dateIn(const WeatherReading& reading) {
    const Array* days = reading.record ? reading.record->arrayForKey("forecast") : nullptr;
    if (days == nullptr || days->size() != 1) {
        ADD_FAILURE() << "no single forecast";
        return 0;
    }
    return (*days)[0].dictionary()->dateForKey("date").value_or(Date()).secondsSinceReferenceDate;
}

double secondsOf(const char* time) {
    const auto instant = instantFromRfc3339(time);
    EXPECT_TRUE(instant) << time;
    return agentDate(instant.value_or(SystemSeconds())).secondsSinceReferenceDate;
}

std::string fileText(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The last example of the page.
std::string exampleOfManualPage() {
    const std::string page = fileText(std::string(repository) + "/packaging/man/plenzohost.toml.5");
    const std::string opening = ".Bd -literal -offset indent\n";
    const std::size_t begin = page.rfind(opening) + opening.size();
    return page.substr(begin, page.find(".Ed", begin) - begin);
}

Dictionary forecast(const char* time, int high, int low, const char* icon, const char* text) {
    return {{Key("date"), Date{secondsOf(time)}},
            {Key("high"), high},
            {Key("low"), low},
            {Key("icon"), icon},
            {Key("text"), text}};
}

} // namespace

TEST(AWeatherText, IsReadAsTheManualPageShowsIt) {
    const WeatherReading reading = readIn("Europe/Berlin", exampleOfManualPage());
    EXPECT_THAT(problemsOf(reading), IsEmpty());
    const Dictionary expected{
        {Key("location"), "Rotterdam"},
        {Key("forecast"),
         Array{forecast("2026-11-23T12:00:00+01:00", 9, 4, "rain", "Rain until the evening"),
               forecast("2026-11-24T09:00:00+01:00", 7, -1, "cloudy", "Cloudy")}}};
    EXPECT_EQ(reading.record, expected);
}

TEST(AWeatherText, OfTheSamplesIsWhole) {
    const WeatherReading reading =
        loadWeather(std::string(repository) + "/samples/weather.json", CalendarZone());
    EXPECT_THAT(problemsOf(reading), IsEmpty());
    ASSERT_TRUE(reading.record);
    EXPECT_EQ(reading.record->arrayForKey("forecast")->size(), 3U);
}

TEST(AWeatherText, HasDaysWithoutATimeAtNoonOfTheZone) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"Europe/Berlin", "2026-03-29", "2026-03-29T10:00:00Z"}, // the clocks change that night
        {"Pacific/Kiritimati", "2026-11-23", "2026-11-22T22:00:00Z"},
        {"Pacific/Apia", "2011-12-30", "2011-12-30T22:00:00Z"}, // a day that they did not have
        {"America/Sao_Paulo", "2018-11-04", "2018-11-04T14:00:00Z"},
    };
    for (const auto& [zone, day, time] : rows) {
        EXPECT_EQ(dateIn(readIn(zone, forecastOf('"' + std::string(day) + '"'))), secondsOf(time))
            << zone;
    }
}

TEST(AWeatherText, HasTimesAsTheStandardWritesThem) {
    const std::pair<const char*, const char*> rows[] = {
        {"2026-11-23T09:00:00Z", "2026-11-23T09:00:00Z"},
        {"2026-11-23t09:00:00.999z", "2026-11-23T09:00:00Z"},
        {"2026-11-23T00:30:00+05:30", "2026-11-22T19:00:00Z"},
        {"2028-02-29T23:59:60-08:00", "2028-03-01T08:00:00Z"}};
    for (const auto& [written, meant] : rows) {
        EXPECT_EQ(dateIn(readIn("Asia/Tokyo", forecastOf('"' + std::string(written) + '"'))),
                  secondsOf(meant))
            << written;
    }
    for (const char* wrong :
         {"", "2026-11-3", "2026-02-29", "2026-13-01", "2026-11-23T09:00:00", "2026-11-23 09:00",
          "2026-11-23T24:30:00Z", "2026-11-23T09:00:00+0100", "2026-11-23T09:00:00.Z", "23.11.2026",
          "2026-11-23T09:00:00ZZ", " 2026-11-23", "2026-11-23T09:00:00+99:99", "+026-11-23"}) {
        EXPECT_THAT(problemsOf(readUtc(forecastOf('"' + std::string(wrong) + '"'))),
                    ElementsAre("w:1:24: \"date\" has to be a text like \"2026-11-23\" or "
                                "\"2026-11-23T09:00:00+01:00\""))
            << wrong;
    }
}

TEST(AWeatherText, LosesOnlyWhatIsWrong) {
    const WeatherReading reading = readUtc(R"({
  "location": 7, "unit": "°C", "forecast": [
    {"date": "2026-11-23", "high": 21.5, "low": -1e1, "icon": [], "text": null, "wind": {"knots": 3}},
    {"date": 801144000, "high": 1, "low": 0},
    {"date": "2026-11-24", "high": "20", "low": true},
    "sunny", {"date": "2026-11-24", "low": 0, "high": null},
    {"date": "2026-11-25", "high": 1001, "low": -1000}
  ]
})");
    EXPECT_THAT(problemsOf(reading),
                ElementsAre("w:2:15: \"location\" has to be a text",
                            "w:3:63: \"icon\" has to be a text",
                            "w:4:14: \"date\" has to be a text like \"2026-11-23\" or "
                            "\"2026-11-23T09:00:00+01:00\"",
                            "w:5:36: \"high\" has to be a number from -1000 to 1000",
                            "w:5:49: \"low\" has to be a number from -1000 to 1000",
                            "w:6:5: a forecast has to be an object: { ... }",
                            "w:6:14: the forecast has no \"high\"",
                            "w:7:36: \"high\" has to be a number from -1000 to 1000"));
    const Dictionary expected{
        {Key("unit"), "°C"},
        {Key("forecast"),
         Array{Value(Dictionary{{Key("date"), Date{secondsOf("2026-11-23T12:00:00Z")}},
                                {Key("high"), 21.5},
                                {Key("low"), -10.0},
                                {Key("wind"), Dictionary{{Key("knots"), 3}}}})}}};
    EXPECT_EQ(reading.record, expected);
}

TEST(AWeatherText, ThatIsNoneGivesNoRecordAndSaysWhere) {
    const std::pair<std::string, const char*> rows[] = {
        {"", "w:1:1: is no JSON: "},
        {"{\"forecast\": [\n", "w:2:1: is no JSON: "},
        {"{\n\"forecast\": [NaN]}", "w:2:14: is no JSON: "},
        {"{\"é\": Infinity}", "w:1:7: is no JSON: "},
        {"{\"forecast\": []} x", "w:1:18: is no JSON: "},
        {"{\"forecast\": \"\xC3\x28\"}", "w:1:"},
        {"{\"forecast\": \"\\uD800\"}", "w:1:"},
        {"{\"forecast\": [-1e999]}", "w:1:20: is no JSON: number overflow"},
        {std::string("\0", 1), "w:1:1: is no JSON: "},
        {"\xFF\xFE{", "w:1:1: is no JSON: "},
        {"[]", "w:1:1: the weather has to be an object: { ... }"},
        {"\xEF\xBB\xBF null", "w:1:3: the weather has to be an object"},
        {"{}", "w:1:1: the weather has no \"forecast\""},
        {" {\"forecast\": null}", "w:1:2: the weather has no \"forecast\""},
        {"{\"forecast\": {}}", "w:1:14: \"forecast\" has to be an array: [ ... ]"}};
    for (const auto& [text, problem] : rows) {
        const WeatherReading reading = readUtc(text);
        EXPECT_FALSE(reading.record) << text;
        EXPECT_THAT(problemsOf(reading), ElementsAre(StartsWith(problem))) << text;
    }
}

TEST(AWeatherText, IsNotRepeatedInWhatIsSaidOfIt) {
    const WeatherReading reading = readUtc("{\"x\": " + std::string(100'000, '1') + "e" +
                                           std::string(100'000, '9') + ", \"\x1B[31m\": }");
    ASSERT_THAT(reading.problems, SizeIs(1));
    EXPECT_THAT(reading.problems[0].text, SizeIs(testing::Lt(200)));
}

TEST(AWeatherText, ThatIsHugeOrDeepTakesNoHarm) {
    constexpr std::size_t limit = 1 << 20;
    std::string ones = "{\"forecast\": [1";
    while (ones.size() < limit - 4) {
        ones += ",1";
    }
    EXPECT_THAT(readUtc(ones + "]}").problems, SizeIs(20));
    EXPECT_FALSE(readUtc(std::string(limit, '[')).record);
    const std::string half(limit / 2, '[');
    EXPECT_FALSE(readUtc(half + std::string(limit / 2, ']')).record);
    const WeatherReading deep =
        readUtc("{\"forecast\": [], \"x\": " + half + std::string(limit / 2, ']') + ", \"y\": 1}");
    EXPECT_THAT(problemsOf(deep), ElementsAre("w:1:38: lies too deep, and is left out"));
    ASSERT_TRUE(deep.record);
    EXPECT_EQ(deep.record->integerForKey("y"), 1);
}

TEST(AWeatherText, MayBeAnything) {
    const std::string sample = fileText(std::string(repository) + "/samples/weather.json");
    const std::string_view fragments[] = {"[",  "]",    "{",      "}",       "\"",           ",",
                                          ":",  "null", "-1e300", "\\u0000", "\xEF\xBF\xBE", "\xFF",
                                          "\\", "\n",   "0",      "9999"};
    std::mt19937 random(20261123); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    int records = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = sample;
        for (unsigned changes = random() % 4; changes < 4; ++changes) {
            const std::string_view fragment = fragments[random() % std::size(fragments)];
            text.replace(random() % text.size(), random() % 8, fragment);
        }
        const WeatherReading reading = readUtc(text);
        records += reading.record ? 1 : 0;
        // Nothing is lost without a word.
        EXPECT_TRUE(reading.record || !reading.problems.empty()) << text;
        for (const ConfigurationProblem& problem : reading.problems) {
            EXPECT_GT(problem.place.line, 0) << text;
        }
    }
    EXPECT_GT(records, 1000);
    EXPECT_LT(records, 19'000);
}

TEST(AJsonText, KnowsWhereEachValueBegins) {
    const std::string text =
        "\xEF\xBB\xBF{ \"a\" : [ 1 ,-2.5,\"x\\n\", true ], \"b\":{}, \"c\": 3}";
    const JsonText json = readJson(text);
    ASSERT_TRUE(json.root);
    std::vector<std::string> begins;
    for (const JsonMember& member : json.root->members) {
        begins.push_back(member.name + text.substr(member.value.offset, 1));
        for (const JsonMember& element : member.value.members) {
            begins.push_back(text.substr(element.value.offset, 1));
        }
    }
    EXPECT_EQ(text[json.root->offset], '{');
    EXPECT_THAT(begins, ElementsAre("a[", "1", "-", "\"", "t", "b{", "c3"));
}

TEST(AWeatherFile, ThatIsMissingIsNoWeatherAndAnyOtherFaultSaysNothingOfIt) {
    const TemporaryFolder folder;
    const WeatherReading missing = loadWeather(folder.file("none"), CalendarZone());
    EXPECT_EQ(missing.record, Dictionary());
    EXPECT_THAT(problemsOf(missing), ElementsAre("w: No such file or directory"));
    std::ofstream(folder.file("large")) << "{\"forecast\": []}" << std::string(1 << 20, ' ');
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    const std::pair<std::string, const char*> rows[] = {
        {folder.file("large"), "w: is larger than 1 MiB"},
        {folder.file("pipe"), "w: is no regular file"},
        {folder.path().string(), "w: is no regular file"}};
    for (const auto& [path, problem] : rows) {
        const WeatherReading reading = loadWeather(path, CalendarZone());
        EXPECT_FALSE(reading.record) << path;
        EXPECT_THAT(problemsOf(reading), ElementsAre(problem));
    }
}

} // namespace plenzo
