#pragma once

#include "host/quick/quick_entry.h"
#include "propertylist/dictionary.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// A place in the configuration's text, both counted from 1; a line of 0 is the file as a whole.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// Something wrong in the configuration, or in a file that it names, for the person who wrote it.
struct ConfigurationProblem {
    TextPlace place;
    std::string text;
};

/// A calendar file or folder that the configuration names, and how it is to be shown.
struct ConfiguredCalendar {
    std::string path;  // absolute
    TextPlace place;   // of the path
    std::string title; // empty: as the calendar names itself
    std::optional<std::uint32_t> color;
    bool isReadOnly = false;
    bool isDefault = false; // new items go there
    TextPlace defaultPlace; // of the key that says so
};

/// What the person has set, with the defaults for everything else. The keys are described in
/// plenzohost.toml(5).
struct Configuration {
    std::vector<ConfiguredCalendar> calendars;
    Dictionary preferences;  // as the agent gets them
    std::string weatherFile; // absolute, or empty
    TextPlace weatherPlace;  // of the path
    DayMonthOrder dayMonthOrder = DayMonthOrder::DayFirst;
    std::optional<std::int64_t> newItemAlarmSeconds; // before the start; nothing: no alarm
    std::vector<ConfigurationProblem> problems;      // in the order of the text
};

/// Where a path in the configuration starts from: "~" is the home folder, empty when there is none,
/// and a relative path is one of the configuration's own folder.
struct PathOrigin {
    std::string home;
    std::string folder;
};

/// Reads TOML. What is wrong is a problem and costs only itself: a line that is no TOML is left
/// out, a key that is unknown or has a wrong value counts as not there, a calendar without a path
/// is none, and of several default calendars the first is it.
Configuration readConfiguration(std::string_view text, const PathOrigin& origin);

/// Reads the file; paths that do not exist are problems too, and stay. A file that cannot be read
/// is a problem of line 0.
Configuration loadConfiguration(const std::string& path);

/// What holds without any file: the folder `calendars` of the user's data, where there is one.
Configuration defaultConfiguration();

/// plenzohost/config.toml in the user's configuration folder (XDG Base Directory Specification);
/// empty when the user has none.
std::string defaultConfigurationPath();

/// The configuration file that is to be read: the one that is named or, where none is, the usual
/// one if it is there; empty for none.
std::string configurationPath(const std::string& named);

/// Where calendars are looked for without any configuration; empty when the user has no folders.
std::string defaultCalendarFolder();

/// In the order of the text.
void sortByPlace(std::vector<ConfigurationProblem>& problems);

/// "PATH:LINE:COLUMN: text", or "PATH: text" for the file as a whole.
std::string problemText(const std::string& path, const ConfigurationProblem& problem);

} // namespace plenzo
