#pragma once

#include "model/alarm.h"
#include "model/nasty_values.h"

#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// Alarms and records by chance, the same for the same seed everywhere.
class RandomAlarms {
public:
    explicit RandomAlarms(std::uint32_t seed) : m_random(seed) {}

    /// So alike that many tie: each is an earlier one with one or two things changed. Among them
    /// are headings and alarms without a record, and keys with values of the wrong type.
    std::vector<Alarm> alikeAlarms(std::size_t count);
    /// Of pieces that collation finds hard; some are not UTF-8.
    std::string title();
    /// An event with two sound reminders, "first" and "last", that are due at its start, and
    /// between them entries of any kind.
    Dictionary recordWithSoundReminders(Instant start);
    /// Any key of a record or of a reminder entry, and sometimes another one.
    Key recordKey();
    const Value& nastyValue() { return oneOf<Value>(nastyValues()); }

    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(m_random() % limit);
    }

private:
    template <typename Item>
    const Item& oneOf(std::span<const Item> items) {
        return items[below(static_cast<std::uint32_t>(items.size()))];
    }
    void changeOneThing(Alarm& alarm);
    void changeRecord(Alarm& alarm);
    Value nastyReminder();

    std::mt19937 m_random;
};

} // namespace plenzo
