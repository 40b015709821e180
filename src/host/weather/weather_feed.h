#pragma once

#include "host/ical/calendar_zone.h"
#include "host/loop/host_loop.h"
#include "host/loop/one_shot_timer.h"
#include "host/store/path_watch.h"
#include "propertylist/dictionary.h"

#include <functional>
#include <optional>
#include <string>

namespace plenzo {

/// Keeps the agent's weather like the weather file: sends it with every full update and whenever it
/// has become another. While the file cannot be understood the last weather stays; without a file
/// there is none.
class WeatherFeed {
public:
    struct Listener {
        std::function<void(const Dictionary& record)> send;
        std::function<void(const std::string& problem)> report;
    };

    /// Serves on the loop, which it outlives.
    WeatherFeed(HostLoop& loop, CalendarZone zone, Listener listener);
    WeatherFeed(const WeatherFeed&) = delete;
    WeatherFeed& operator=(const WeatherFeed&) = delete;

    /// At a full update: sends what there is. An empty path is no file.
    void sendAll(const std::string& path);
    /// When the path may be another one than before: sends what has changed.
    void sendChanges(const std::string& path);

private:
    void follow(const std::string& path);
    void watchFile();
    void readFile();
    void sendIfChanged();
    void settled();

    CalendarZone m_zone;
    Listener m_listener;
    PathWatch m_watch;
    OneShotTimer m_settling;
    bool m_isSettling = false;
    std::string m_path;
    std::optional<Dictionary> m_record; // nothing: the agent keeps what it has
    std::optional<Dictionary> m_sentRecord;
};

} // namespace plenzo
