#include "host/configuration/configuration.h"
#include "host/configuration/configured_path.h"
#include "host/configuration/duration_text.h"
#include "host/ical/color_names.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cstdlib>

namespace plenzo {

namespace {

enum class PreferenceKind : std::uint8_t { Flag, Days, Snooze };

/// A preference by its name in the file and its key in the agent.
struct PreferenceRow {
    std::string_view name;
    const char* key;
    PreferenceKind kind;
};

constexpr PreferenceRow preferenceRows[] = {
    {"snooze", "alarmsSnoozeSeconds", PreferenceKind::Snooze},
    {"return-snoozes", "alarmsSnoozeDefault", PreferenceKind::Flag},
    {"take-focus", "alarmsTakeFocus", PreferenceKind::Flag},
    {"show-menu-icon", "alarmsShowMenuIcon", PreferenceKind::Flag},
    {"show-alarms", "alarmsIssueAlarms", PreferenceKind::Flag},
    {"use-notifications", "alarmsUseNotificationCenter", PreferenceKind::Flag},
    {"days-to-show", "alarmsDaysToShow", PreferenceKind::Days},
    {"show-dated", "alarmsShowDated", PreferenceKind::Flag},
    {"show-undated", "alarmsShowUndated", PreferenceKind::Flag},
    {"show-completed", "alarmsShowCompleted", PreferenceKind::Flag},
    {"keep-open", "alarmsSticky", PreferenceKind::Flag},
};

TextPlace placeOf(const toml::source_region& source) {
    return {static_cast<int>(source.begin.line), static_cast<int>(source.begin.column)};
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// Reads the tables of one configuration into its values.
class ConfigurationReader {
public:
    explicit ConfigurationReader(const PathOrigin& origin) : m_origin(origin) {
        m_result.preferences = {{Key("alarmsIssueAlarms"), true},
                                {Key("alarmsUseNotificationCenter"), false}};
    }

    void addSyntaxError(const toml::parse_error& error) {
        addProblem(placeOf(error.source()), std::string(error.description()));
    }

    Configuration read(const toml::table& root) {
        for (const auto& [key, value] : root) {
            if (key == "calendar") {
                readCalendars(value);
            } else if (key == "preferences") {
                readTable(key, value, &ConfigurationReader::readPreference);
            } else if (key == "weather") {
                readTable(key, value, &ConfigurationReader::readWeather);
            } else if (key == "quick-entry") {
                readTable(key, value, &ConfigurationReader::readQuickEntry);
            } else {
                addUnknown(key, "");
            }
        }
        return std::move(m_result);
    }

private:
    using EntryReader = void (ConfigurationReader::*)(const toml::key&, const toml::node&);

    void addProblem(TextPlace place, std::string text) {
        m_result.problems.push_back({place, std::move(text)});
    }

    void addUnknown(const toml::key& key, const std::string& table) {
        addProblem(placeOf(key.source()), "unknown key " + quoted(key.str()) + table);
    }

    void addWrong(const toml::key& key, const toml::node& value, const std::string& wanted) {
        addProblem(placeOf(value.source()), quoted(key.str()) + " has to be " + wanted);
    }

    void readTable(const toml::key& key, const toml::node& value, EntryReader reader) {
        if (!value.is_table()) {
            addProblem(placeOf(key.source()),
                       quoted(key.str()) + " has to be a table: [" + std::string(key.str()) + "]");
            return;
        }
        for (const auto& [name, entry] : *value.as_table()) {
            (this->*reader)(name, entry);
        }
    }

    void readCalendars(const toml::node& value) {
        if (!value.is_array()) {
            addProblem(placeOf(value.source()), "calendars are written as [[calendar]]");
            return;
        }
        for (const toml::node& calendar : *value.as_array()) {
            if (calendar.is_table()) {
                readCalendar(*calendar.as_table());
            } else {
                addProblem(placeOf(calendar.source()), "calendars are written as [[calendar]]");
            }
        }
    }

    void readCalendar(const toml::table& table) {
        ConfiguredCalendar calendar;
        for (const auto& [key, value] : table) {
            readCalendarEntry(key, value, calendar);
        }
        if (calendar.path.empty()) {
            if (!table.contains("path")) {
                addProblem(placeOf(table.source()), "the calendar has no path");
            }
            return;
        }
        settleDefault(calendar);
        m_result.calendars.push_back(std::move(calendar));
    }

    void settleDefault(ConfiguredCalendar& calendar) {
        if (!calendar.isDefault) {
            return;
        }
        calendar.isDefault = !m_hasDefault;
        if (m_hasDefault) {
            addProblem(calendar.defaultPlace, "another calendar is the default already");
        } else if (calendar.isReadOnly) {
            addProblem(calendar.defaultPlace,
                       "new items cannot be written: the default calendar is read-only");
        }
        m_hasDefault = true;
    }

    void readCalendarEntry(const toml::key& key, const toml::node& value,
                           ConfiguredCalendar& calendar) {
        if (key == "path") {
            calendar.path = pathAt(key, value);
            calendar.place = placeOf(value.source());
        } else if (key == "name") {
            calendar.title = textAt(key, value);
        } else if (key == "color") {
            readColor(key, value, calendar);
        } else if (key == "read-only") {
            calendar.isReadOnly = flagAt(key, value).value_or(false);
        } else if (key == "default") {
            calendar.isDefault = flagAt(key, value).value_or(false);
            calendar.defaultPlace = placeOf(key.source());
        } else {
            addUnknown(key, " of a calendar");
        }
    }

    void readColor(const toml::key& key, const toml::node& value, ConfiguredCalendar& calendar) {
        const std::string text = textAt(key, value);
        calendar.color = colorFromText(text);
        if (!calendar.color && !text.empty()) {
            addProblem(placeOf(value.source()),
                       quoted(text) + " is no colour: a name of CSS or \"#rrggbb\"");
        }
    }

    /// Empty, with a problem, for what is no text or an empty one.
    std::string textAt(const toml::key& key, const toml::node& value) {
        const auto* text = value.as_string();
        if (text == nullptr || text->get().empty()) {
            addWrong(key, value, "a text");
            return {};
        }
        return text->get();
    }

    std::string pathAt(const toml::key& key, const toml::node& value) {
        const std::string text = textAt(key, value);
        if (text.empty()) {
            return {};
        }
        ConfiguredPath path = pathFromText(text, m_origin);
        if (!path.error.empty()) {
            addProblem(placeOf(value.source()), std::move(path.error));
        }
        return path.path;
    }

    std::optional<bool> flagAt(const toml::key& key, const toml::node& value) {
        const auto* flag = value.as_boolean();
        if (flag == nullptr) {
            addWrong(key, value, "true or false");
            return std::nullopt;
        }
        return flag->get();
    }

    void readPreference(const toml::key& key, const toml::node& value) {
        const auto* row =
            std::find_if(std::begin(preferenceRows), std::end(preferenceRows),
                         [&](const PreferenceRow& known) { return known.name == key.str(); });
        if (row == std::end(preferenceRows)) {
            addUnknown(key, " of the preferences");
            return;
        }
        if (row->kind == PreferenceKind::Flag) {
            if (const auto flag = flagAt(key, value)) {
                m_result.preferences.set(Key(row->key), *flag);
            }
            return;
        }
        const auto number =
            row->kind == PreferenceKind::Days ? daysAt(key, value) : snoozeAt(key, value);
        if (number) {
            m_result.preferences.set(Key(row->key), *number);
        }
    }

    std::optional<std::int64_t> daysAt(const toml::key& key, const toml::node& value) {
        constexpr std::int64_t mostDays = 366;
        const auto* number = value.as_integer();
        if (number == nullptr || number->get() < 1 || number->get() > mostDays) {
            addWrong(key, value, "a whole number from 1 to 366");
            return std::nullopt;
        }
        return number->get();
    }

    std::optional<std::int64_t> snoozeAt(const toml::key& key, const toml::node& value) {
        const auto seconds = secondsAt(value);
        if (!seconds) {
            addWrong(key, value,
                     "a number of seconds, or a text like \"5 min\" or \"10 min before start\", "
                     "of at most ten days");
        }
        return seconds;
    }

    static std::optional<std::int64_t> secondsAt(const toml::node& value) {
        constexpr std::int64_t mostSeconds = 864'000;
        const auto* number = value.as_integer();
        const auto* text = value.as_string();
        if (number != nullptr && number->get() >= -mostSeconds && number->get() <= mostSeconds) {
            return number->get();
        }
        return text != nullptr ? secondsOfDurationText(text->get()) : std::nullopt;
    }

    /// Always before the start, whether that is said or not.
    void readNewItemAlarm(const toml::key& key, const toml::node& value) {
        if (const auto seconds = secondsAt(value)) {
            m_result.newItemAlarmSeconds = std::abs(*seconds);
        } else {
            addWrong(key, value,
                     "a number of seconds, or a text like \"10 min\", of at most ten days");
        }
    }

    void readWeather(const toml::key& key, const toml::node& value) {
        if (key == "file") {
            m_result.weatherFile = pathAt(key, value);
            m_result.weatherPlace = placeOf(value.source());
        } else {
            addUnknown(key, " of the weather");
        }
    }

    void readQuickEntry(const toml::key& key, const toml::node& value) {
        if (key == "date-order") {
            readDateOrder(key, value);
        } else if (key == "alarm") {
            readNewItemAlarm(key, value);
        } else {
            addUnknown(key, " of the quick entry");
        }
    }

    void readDateOrder(const toml::key& key, const toml::node& value) {
        const auto* text = value.as_string();
        if (text != nullptr && text->get() == "month-first") {
            m_result.dayMonthOrder = DayMonthOrder::MonthFirst;
        } else if (text == nullptr || text->get() != "day-first") {
            addWrong(key, value, "\"day-first\" or \"month-first\"");
        }
    }

    const PathOrigin& m_origin;
    Configuration m_result;
    bool m_hasDefault = false;
};

/// Puts spaces in place of a line, so that the places of the others stay. False when there is
/// nothing but spaces.
bool blankLine(std::string& text, int line) {
    std::size_t begin = 0;
    for (int each = 1; each < line && begin < text.size(); ++each) {
        begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
    }
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const bool isBlank = text.find_first_not_of(" \r", begin) >= end;
    std::fill(text.begin() + static_cast<std::ptrdiff_t>(begin),
              text.begin() + static_cast<std::ptrdiff_t>(end), ' ');
    return !isBlank;
}

/// The tables of the lines that are TOML; nothing when too many are not.
std::optional<toml::table> parsedLines(std::string text, ConfigurationReader& reader) {
    constexpr int mostErrors = 20;
    for (int each = 0; each < mostErrors; ++each) {
        try {
            return toml::parse(text);
        } catch (const toml::parse_error& error) {
            reader.addSyntaxError(error);
            if (!blankLine(text, placeOf(error.source()).line)) {
                return std::nullopt;
            }
        }
    }
    return std::nullopt;
}

} // namespace

Configuration readConfiguration(std::string_view text, const PathOrigin& origin) {
    ConfigurationReader reader(origin);
    // Not copied: a copied node has lost its place.
    const auto root = parsedLines(std::string(text), reader);
    Configuration configuration = root ? reader.read(*root) : reader.read({});
    sortByPlace(configuration.problems);
    return configuration;
}

} // namespace plenzo
