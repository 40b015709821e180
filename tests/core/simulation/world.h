#pragma once

#include "core/simulation/oracle.h"
#include "core/simulation/simulated_record.h"
#include "core/test_agent.h"
#include "support/fake_windows.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace plenzo::simulation {

inline constexpr double minute = 60; // seconds
inline constexpr double hour = 3600;
inline constexpr double day = 86400;

/// A year of an agent's life with a host and a user: everything that happens is drawn from the
/// seed. Beside the agent goes the oracle, and after each happening both must agree on what reached
/// the user, and when.
class World {
public:
    explicit World(std::uint32_t seed);
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    void liveAYear();
    /// Empty while both agree; else what was missed or too much, and what happened before.
    [[nodiscard]] const std::string& fault() const { return m_fault; }
    /// How many alarms reached the user.
    [[nodiscard]] std::size_t firedCount() const { return m_firedCount; }

private:
    /// What the window gets, with the moment at which it gets it.
    class Window;
    /// A batch of the host, as the oracle learns it: all records, or only changed ones.
    struct Batch {
        bool isDelta = false;
        std::vector<std::string> deleted;
        std::vector<Record> records;
    };

    // What happens.
    void passTime();
    void passQuietWeeks();
    void pushAll();
    void pushChanges();
    void acknowledge();
    void sleepAndWake();
    void setClockForward();
    void setClockBack();
    void changeZone();
    void powerOffAndOn();
    void cancelPowerOff();
    void crash();

    // What they are made of.
    [[nodiscard]] std::uint32_t below(std::uint32_t limit);
    [[nodiscard]] double seconds(double least, double most);
    [[nodiscard]] Record newRecord();
    void change(Record& record, Batch& batch);
    void acknowledgeAhead(Record& record) const;
    void push(const Batch& batch);
    void learn(const Batch& batch);
    void advance(double forSeconds);
    void advanceWithin(Instant until);
    void launch();
    void end();
    void expect(const Firings& firings);
    void compare(const char* happening);

    std::mt19937 m_random;
    TestDesktop m_desktop;
    std::unique_ptr<Window> m_window;
    std::unique_ptr<PlenzoAlarm> m_agent;
    Oracle m_oracle;
    std::vector<Record> m_records;
    Firings m_expected;
    Firings m_latelyFired;
    bool m_asleep = false;
    /// Batches that the agent keeps until some time after waking.
    std::vector<Batch> m_waiting;
    std::optional<Instant> m_waitingUntil;
    Instant m_lastSetBack{-1e12};
    Instant m_lastLaunch{-1e12};
    std::uint32_t m_recordCount = 0;
    std::size_t m_firedCount = 0;
    std::vector<std::string> m_history;
    std::string m_fault;
};

} // namespace plenzo::simulation
