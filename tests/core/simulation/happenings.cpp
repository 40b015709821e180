// What happens in the world, and which of it how often.

#include "core/simulation/world.h"
#include "support/instants.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace plenzo::simulation {

namespace {

constexpr double longestShutdownSeconds = hour;

constexpr const char* zoneNames[] = {"Europe/Berlin",     "America/New_York",    "America/St_Johns",
                                     "Asia/Kolkata",      "Australia/Lord_Howe", "Pacific/Apia",
                                     "Africa/Casablanca", "Asia/Tokyo"};
} // namespace

/// Longer than the queue looks ahead at once.
void World::passQuietWeeks() {
    advance(seconds(15 * day, 25 * day));
    compare("quiet weeks passed");
}

void World::passTime() {
    advance(seconds(0, 20 * hour));
    compare("time passed");
}

void World::pushAll() {
    push({.isDelta = false, .deleted = {}, .records = m_records});
    compare("everything was pushed");
}

void World::change(Record& record, Batch& batch) {
    const std::uint32_t what = below(10);
    if (what == 0) {
        batch.records.push_back(m_records.emplace_back(newRecord()));
        return;
    }
    if (what == 2) {
        acknowledgeAhead(record);
    }
    batch.deleted.push_back(record.uid);
    if (what == 1) {
        record.reminders.clear(); // deleted, with nothing in its place
        return;
    }
    record.start = what < 5 ? m_desktop.clock.now() + seconds(0, 5 * day) : record.start;
    if (what == 5) {
        // A snooze.
        record.reminders.push_back({.uid = record.uid + "s" + std::to_string(below(1000000)),
                                    .type = 0,
                                    .absolute = m_desktop.clock.now() + seconds(0, 2 * hour),
                                    .relativeSeconds = 0,
                                    .acknowledged = std::nullopt});
    }
    batch.records.push_back(record);
}

/// As on another machine whose clock is ahead: what is still to come is done already.
void World::acknowledgeAhead(Record& record) const {
    for (Reminder& reminder : record.reminders) {
        const auto due = dueDate(record, reminder, m_desktop.regionalSettings.timeZone());
        if (due && !reminder.absolute) {
            reminder.acknowledged = *due + 1;
        }
    }
}

void World::pushChanges() {
    Batch batch{.isDelta = true, .deleted = {}, .records = {}};
    m_records.reserve(m_records.size() + 20);
    for (std::uint32_t count = 1 + below(20); count > 0; --count) {
        Record& record = m_records[below(static_cast<std::uint32_t>(m_records.size()))];
        if (std::ranges::find(batch.deleted, record.uid) == batch.deleted.end() &&
            std::ranges::find(batch.records, record.uid, &Record::uid) == batch.records.end()) {
            change(record, batch);
        }
    }
    if (below(10) == 0) {
        const auto number = below(static_cast<std::uint32_t>(m_records.size()));
        batch.records.push_back(m_records[number]); // unpaired: comes beside the old one
    }
    push(batch);
    compare("changes were pushed");
}

/// The user deals with some of what has come, and the host says so.
void World::acknowledge() {
    Batch batch{.isDelta = true, .deleted = {}, .records = {}};
    for (const Firing& firing : std::exchange(m_latelyFired, {})) {
        const auto record = std::ranges::find(m_records, firing.recordUID, &Record::uid);
        if (below(2) == 0 || record == m_records.end() || firing.isAbsolute) {
            continue;
        }
        for (Reminder& reminder : record->reminders) {
            if (reminder.uid == firing.reminderUID) {
                reminder.acknowledged = m_desktop.clock.now();
            }
        }
        std::erase_if(batch.records, [&](const Record& other) { return other.uid == record->uid; });
        batch.deleted.push_back(record->uid);
        batch.records.push_back(*record);
    }
    push(batch);
    compare("alarms were acknowledged");
}

void World::sleepAndWake() {
    m_desktop.powerNotices.fallAsleep();
    m_asleep = true;
    m_waitingUntil.reset();
    advance(seconds(0, 5)); // it takes the machine a while
    m_oracle.sleep();
    for (std::uint32_t pushes = below(3); pushes > 0; --pushes) {
        below(2) == 0 ? pushChanges() : acknowledge();
    }
    const double nap = below(3) == 0 ? seconds(hour, 6 * day) : seconds(minute, 10 * hour);
    m_desktop.clock.set(m_desktop.clock.now() + nap);
    expect(m_oracle.advanceTo(m_desktop.clock.now()));
    expect(m_oracle.wake());
    m_asleep = false;
    m_waitingUntil = m_desktop.clock.now() + 1;
    const bool timersComeFirst = below(2) == 0;
    if (timersComeFirst) {
        m_desktop.timers.fireDue();
    }
    m_desktop.powerNotices.wakeUp();
    compare("the machine slept and woke");
    m_desktop.timers.fireDue();
    compare("the timers noticed that too");
}

void World::setClockForward() {
    m_desktop.clock.set(m_desktop.clock.now() + seconds(1, 3 * day));
    expect(m_oracle.setClock(m_desktop.clock.now()));
    if (below(2) == 0) {
        m_desktop.timers.fireDue();
    }
    m_desktop.systemChangeNotices.changeTime();
    m_desktop.timers.fireDue();
    m_waitingUntil.reset();
    for (const Batch& batch : std::exchange(m_waiting, {})) {
        learn(batch);
    }
    expect(m_oracle.advanceTo(m_desktop.clock.now()));
    compare("the clock was set forward");
}

void World::setClockBack() {
    const Instant now = m_desktop.clock.now();
    if (m_waitingUntil || now - m_lastSetBack < 5 * day || now - m_lastLaunch < day) {
        return; // what has fired is remembered for so long, and by the running agent only
    }
    m_lastSetBack = now;
    m_desktop.clock.set(now - seconds(1, 20 * hour));
    expect(m_oracle.setClock(m_desktop.clock.now()));
    m_desktop.systemChangeNotices.changeTime();
    m_desktop.timers.fireDue();
    compare("the clock was set back");
}

void World::changeZone() {
    const TimeZone previous = m_desktop.regionalSettings.timeZone();
    const TimeZone next = zone(zoneNames[below(std::size(zoneNames))]);
    m_desktop.regionalSettings.setTimeZone(next);
    if (!(previous == next)) {
        expect(m_oracle.changeZone(next));
    }
    m_desktop.systemChangeNotices.changeTimeZoneFrom(previous);
    m_desktop.timers.fireDue();
    compare("the zone changed");
}

void World::powerOffAndOn() {
    if (m_oracle.isInRepeatedTime()) {
        return;
    }
    m_desktop.powerNotices.shutDown();
    // What still fires must not come again, not even what fires with the last breath.
    const Instant next = m_agent->nextFireDate();
    advance(below(2) == 0 ? seconds(0, 10)
                          : std::min(next - m_desktop.clock.now(), longestShutdownSeconds));
    compare("the power went off");
    end();
    m_oracle.sleep();
    m_desktop.clock.set(m_desktop.clock.now() + seconds(0, 4 * day));
    expect(m_oracle.advanceTo(m_desktop.clock.now()));
    expect(m_oracle.wake());
    launch();
    m_desktop.timers.fireDue();
    compare("the agent was restored");
    advance(below(2) == 0 ? 0 : seconds(0, hour));
    pushAll();
}

void World::cancelPowerOff() {
    m_desktop.powerNotices.shutDown();
    advance(seconds(0, 60));
    m_desktop.powerNotices.cancelShutdown();
    compare("the power stayed on");
}

/// What was known is lost, until the host says it again; also that something has fired.
void World::crash() {
    if (m_oracle.isInRepeatedTime()) {
        return;
    }
    m_agent.reset();
    m_waiting.clear();
    m_waitingUntil.reset();
    m_oracle.forgetAll();
    m_desktop.clock.set(m_desktop.clock.now() + seconds(0, hour));
    expect(m_oracle.advanceTo(m_desktop.clock.now()));
    launch();
    advance(below(2) == 0 ? 0 : seconds(0, hour));
    compare("the agent crashed");
    pushAll();
}

void World::liveAYear() {
    struct Happening {
        void (World::*happens)();
        std::uint32_t weight;
    };
    static constexpr Happening happenings[] = {
        {&World::passTime, 30},      {&World::pushChanges, 20},  {&World::acknowledge, 15},
        {&World::pushAll, 4},        {&World::sleepAndWake, 12}, {&World::setClockForward, 1},
        {&World::setClockBack, 1},   {&World::changeZone, 3},    {&World::powerOffAndOn, 3},
        {&World::cancelPowerOff, 1}, {&World::crash, 1},         {&World::passQuietWeeks, 1}};
    std::uint32_t total = 0;
    for (const Happening& happening : happenings) {
        total += happening.weight;
    }
    while (m_desktop.clock.now() < utc(2027, 1, 1) && m_fault.empty()) {
        std::uint32_t drawn = below(total);
        const Happening* happening = happenings;
        while (drawn >= happening->weight) {
            drawn -= happening->weight;
            ++happening;
        }
        (this->*happening->happens)();
    }
}

} // namespace plenzo::simulation
