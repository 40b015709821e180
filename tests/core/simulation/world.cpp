#include "core/simulation/world.h"

#include "support/instants.h"

#include <algorithm>
#include <array>
#include <utility>

namespace plenzo::simulation {

namespace {

constexpr std::size_t recordCount = 2000;
constexpr std::size_t sharedReminderCount = 20;

std::string described(const Firing& firing) {
    return firing.recordUID + "/" + firing.reminderUID + " due " +
           std::to_string(firing.due.secondsSinceReferenceDate()) + " at " +
           std::to_string(firing.at.secondsSinceReferenceDate()) + "\n";
}

} // namespace

class World::Window final : public AlarmWindowController {
public:
    explicit Window(const Clock& clock) : m_clock(clock) {}

    void setDelegate(AlarmWindowControllerDelegate* /*delegate*/) override {}
    void makeAlarmWindowKeyIfVisible() override {}
    void addDisplayAlarm(const Alarm& alarm) override {
        firings.push_back({.at = m_clock.now(),
                           .recordUID = std::string(alarm.eventText(keys::uid)),
                           .reminderUID = std::string(alarm.reminderText(keys::uid)),
                           .due = alarm.fireDate.value().instant(),
                           .isAbsolute = alarm.reminderDict->contains(keys::abs)});
    }
    void showAlarmWindowIfNecessary() override {}
    [[nodiscard]] std::vector<DisplayedAlarm> displayedAlarms() const override { return {}; }
    void removeDisplayAlarm(std::uint64_t /*row*/) override {}
    void midnightRefresh() override {}
    void snoozePrefsChanged() override {}

    Firings firings;

private:
    const Clock& m_clock;
};

World::World(std::uint32_t seed)
    : m_random(seed), m_desktop(utc(2026, 1, 1, 5)),
      m_window(std::make_unique<Window>(m_desktop.clock)),
      m_oracle(m_desktop.clock.now(), m_desktop.regionalSettings.timeZone()) {
    m_desktop.defaults.setValues(Dictionary{{Key(preferences::issueAlarms), true},
                                            {Key(preferences::useNotificationCenter), false}});
    for (std::size_t number = 0; number < recordCount; ++number) {
        m_records.push_back(newRecord());
    }
    launch();
    pushAll();
}

World::~World() = default;

std::uint32_t World::below(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
}

/// To the millisecond, or often to the minute, as people have it.
double World::seconds(double least, double most) {
    const double drawn = least + (most - least) * (below(1000000) / 1e6);
    const double step = below(3) == 0 ? 0.001 : minute;
    return std::max(least, std::floor(drawn / step) * step);
}

Record World::newRecord() {
    static constexpr Record::Kind kinds[] = {Record::Kind::Timed,    Record::Kind::Timed,
                                             Record::Kind::Timed,    Record::Kind::AllDay,
                                             Record::Kind::Floating, Record::Kind::Undated};
    static constexpr int types[] = {0, 0, 1, 1, 3, 10};
    const Instant year = utc(2026, 1, 1);
    Record record{.uid = "e" + std::to_string(m_recordCount++),
                  .kind = kinds[below(std::size(kinds))],
                  .start = year + seconds(-5 * day, 370 * day),
                  .reminders = {}};
    for (std::uint32_t number = below(4); number > 0; --number) {
        Reminder reminder{.uid = record.uid + "r" + std::to_string(number),
                          .type = types[below(std::size(types))],
                          .absolute = std::nullopt,
                          .relativeSeconds = below(3) == 0 ? 0 : -seconds(0, 3 * day),
                          .acknowledged = std::nullopt};
        if (below(8) == 0) {
            // One of those that several occurrences share.
            const std::uint32_t shared = below(sharedReminderCount);
            reminder.uid = "shared" + std::to_string(shared);
            reminder.type = 0;
            reminder.absolute = year + shared * 17 * day + 9 * hour;
        } else if (below(4) == 0) {
            reminder.absolute = year + seconds(0, 366 * day);
        }
        record.reminders.push_back(reminder);
    }
    return record;
}

void World::expect(const Firings& firings) {
    m_expected.insert(m_expected.end(), firings.begin(), firings.end());
}

void World::compare(const char* happening) {
    std::string fault;
    m_history.push_back(std::string(happening) + " until " +
                        std::to_string(m_desktop.clock.now().secondsSinceReferenceDate()) + "\n");
    for (const Firing& firing : std::exchange(m_window->firings, {})) {
        const auto found = std::ranges::find(m_expected, firing);
        if (found != m_expected.end()) {
            m_expected.erase(found);
        } else if (m_oracle.mayFire(firing)) {
            m_oracle.noteFiring(firing);
        } else {
            fault += "too much: " + described(firing);
        }
        m_latelyFired.push_back(firing);
        ++m_firedCount;
    }
    for (const Firing& firing : std::exchange(m_expected, {})) {
        fault += "missed: " + described(firing);
    }
    if (m_fault.empty() && !fault.empty()) {
        m_fault = fault;
        const std::size_t shown = std::min<std::size_t>(m_history.size(), 20);
        for (auto line = m_history.end() - static_cast<std::ptrdiff_t>(shown);
             line != m_history.end(); ++line) {
            m_fault += *line;
        }
    }
}

void World::launch() {
    m_agent = std::make_unique<PlenzoAlarm>(m_desktop.platform(), testIdentity(),
                                            WindowControllers{m_window.get(), nullptr});
    m_agent->applicationDidFinishLaunching();
    m_lastLaunch = m_desktop.clock.now();
}

void World::end() {
    m_agent->applicationWillTerminate();
    m_agent.reset();
    m_waiting.clear();
    m_waitingUntil.reset();
}

void World::learn(const Batch& batch) {
    if (!batch.isDelta) {
        m_oracle.learnAll(batch.records);
        return;
    }
    for (const std::string& uid : batch.deleted) {
        m_oracle.forget(uid);
    }
    for (const Record& record : batch.records) {
        m_oracle.learn(record);
    }
}

void World::push(const Batch& batch) {
    Array eventDicts;
    for (const std::string& uid : batch.deleted) {
        eventDicts.append(Value(deletionNotice(uid)));
    }
    for (const Record& record : batch.records) {
        eventDicts.append(Value(dictionaryOf(record)));
    }
    m_agent->alarmsUpdated(std::move(eventDicts), batch.isDelta);
    if (m_asleep || m_waitingUntil) {
        m_waiting.push_back(batch);
    } else {
        learn(batch);
        expect(m_oracle.advanceTo(m_desktop.clock.now()));
        m_desktop.timers.fireDue();
    }
}

void World::advanceWithin(Instant until) {
    while (m_desktop.timers.nextFireDate() <= until) {
        m_desktop.timers.advanceTo(m_desktop.timers.nextFireDate());
    }
    m_desktop.clock.set(until);
    expect(m_oracle.advanceTo(until));
}

void World::advance(double forSeconds) {
    const Instant until = m_desktop.clock.now() + forSeconds;
    if (m_waitingUntil && *m_waitingUntil <= until) {
        advanceWithin(*m_waitingUntil);
        m_waitingUntil.reset();
        for (const Batch& batch : std::exchange(m_waiting, {})) {
            learn(batch);
            expect(m_oracle.advanceTo(m_desktop.clock.now()));
        }
    }
    advanceWithin(until);
}

} // namespace plenzo::simulation
