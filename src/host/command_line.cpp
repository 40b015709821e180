#include "host/command_line.h"

#include "host/commands/host_command.h"
#include "host/ical/system_zone.h"
#include "host/ical/zone_table.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace plenzo {

namespace {

constexpr int longestWindowDays = 3660;
constexpr int usageError = 2;

/// The texts of the options before they are understood.
struct OptionTexts {
    std::string now;
    std::string zone;
    std::string configuration;
    bool dumps = false;
    bool checks = false;
};

void declareOptions(CLI::App& parser, HostOptions& options, OptionTexts& texts) {
    parser.set_version_flag("--version", "plenzohost " PLENZO_VERSION);
    parser.add_option("PATH", options.paths,
                      "iCalendar files, or folders with .ics files (and the folders in them), "
                      "instead of the calendars of the configuration; or plenzoevent URLs, for the "
                      "host that runs already");
    parser
        .add_option("--config", texts.configuration,
                    "Read this file instead of plenzohost/config.toml in the configuration folder")
        ->type_name("FILE");
    parser.add_option("--days", options.days, "How many days to look ahead, today included")
        ->check(CLI::Range(1, longestWindowDays))
        ->capture_default_str();
    parser.add_option("--now", texts.now, "Take this RFC 3339 time for the present")
        ->type_name("TIME");
    parser
        .add_option("--zone", texts.zone, "Take this time zone for the system's, as Europe/Berlin")
        ->type_name("NAME");
    parser.add_flag("--dump", texts.dumps,
                    "Write what the agent would be sent to standard output, as one binary property "
                    "list, and end");
    CLI::App* check = parser.add_subcommand(
        "check", "Say what is wrong in the configuration and in what it names, and end");
    check->add_option("FILE", texts.configuration, "The configuration to check");
    check->callback([&texts] { texts.checks = true; });
}

std::optional<SystemSeconds> instantFromText(const std::string& text) {
    SystemSeconds instant;
    return cctz::parse("%Y-%m-%dT%H:%M:%E*S%Ez", text, cctz::utc_time_zone(), &instant)
               ? std::optional(instant)
               : std::nullopt;
}

/// What is wrong with the texts, or nothing.
std::string understand(const OptionTexts& texts, HostOptions& options) {
    options.mode = texts.checks ? HostMode::Check : texts.dumps ? HostMode::Dump : HostMode::Serve;
    options.configurationPath = texts.configuration;
    options.zone = CalendarZone(cctz::local_time_zone());
    options.zoneName = texts.zone.empty() ? systemZoneName() : texts.zone;
    options.followsSystemZone = texts.zone.empty() && std::getenv("TZ") == nullptr;
    const auto urls = std::stable_partition(options.paths.begin(), options.paths.end(),
                                            [](const auto& path) { return !isCommandUrl(path); });
    std::move(urls, options.paths.end(), std::back_inserter(options.commandUrls));
    options.paths.erase(urls, options.paths.end());
    if (!texts.zone.empty()) {
        const auto zone = systemZoneNamed(texts.zone);
        if (!zone) {
            return "--zone: no time zone is named \"" + texts.zone + "\"";
        }
        options.zone = CalendarZone(*zone);
    }
    options.fixedNow = texts.now.empty() ? std::nullopt : instantFromText(texts.now);
    return texts.now.empty() || options.fixedNow
               ? ""
               : "--now: \"" + texts.now + "\" is no time like 2026-03-01T09:00:00+01:00";
}

} // namespace

CommandLine readCommandLine(int argumentCount, const char* const* arguments) {
    CLI::App parser("Feeds the alarm agent with the events and to-dos of iCalendar files.",
                    "plenzohost");
    HostOptions options;
    OptionTexts texts;
    try {
        declareOptions(parser, options, texts);
        parser.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return {std::nullopt, parser.exit(error) == 0 ? 0 : usageError};
    }
    const std::string problem = understand(texts, options);
    if (!problem.empty()) {
        std::cerr << "plenzohost: " << problem << '\n';
        return {std::nullopt, usageError};
    }
    return {std::move(options), 0};
}

} // namespace plenzo
