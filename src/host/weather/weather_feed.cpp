#include "host/weather/weather_feed.h"

#include "host/files/file_paths.h"
#include "host/weather/weather_file.h"

#include <ctime>
#include <utility>

namespace plenzo {

namespace {

/// A file that is taken away to make room for another is not missed for so long.
constexpr int settlingMilliseconds = 100;

} // namespace

WeatherFeed::WeatherFeed(HostLoop& loop, CalendarZone zone, Listener listener)
    : m_zone(std::move(zone)), m_listener(std::move(listener)), m_settling(CLOCK_MONOTONIC) {
    loop.watch(m_watch.descriptor(), [this] {
        if (m_watch.readChanges() && !m_isSettling) {
            m_isSettling = true;
            m_settling.expireIn(settlingMilliseconds);
        }
    });
    loop.watch(m_settling.descriptor(), [this] { settled(); });
}

void WeatherFeed::sendAll(const std::string& path) {
    follow(path);
    m_sentRecord.reset();
    sendIfChanged();
}

void WeatherFeed::sendChanges(const std::string& path) {
    if (path != m_path) {
        follow(path);
        sendIfChanged();
    }
}

void WeatherFeed::settled() {
    m_settling.acknowledge();
    m_isSettling = false;
    follow(m_path);
    sendIfChanged();
}

void WeatherFeed::follow(const std::string& path) {
    const bool wasThere = !m_path.empty();
    m_path = path;
    if (!path.empty()) {
        watchFile();
        readFile();
    } else if (wasThere) {
        m_record = Dictionary();
    }
}

/// Again and again: the folder may be another one by now. A link is one file, its target another.
void WeatherFeed::watchFile() {
    m_watch.watch({m_path, canonicalPath(m_path)});
}

void WeatherFeed::readFile() {
    WeatherReading reading = loadWeather(m_path, m_zone);
    for (const ConfigurationProblem& problem : reading.problems) {
        m_listener.report(problemText(m_path, problem));
    }
    if (reading.record) {
        m_record = std::move(reading.record);
    }
}

void WeatherFeed::sendIfChanged() {
    if (m_record && m_record != m_sentRecord) {
        m_sentRecord = m_record;
        m_listener.send(*m_record);
    }
}

} // namespace plenzo
