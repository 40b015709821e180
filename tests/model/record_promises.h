#pragma once

#include "model/alarm_computation.h"
#include "model/title_order.h"

#include <optional>
#include <vector>

namespace plenzo {

/// What must hold of all that is computed from a record, whatever the record holds. What does not
/// is a failure of the test that runs.
class RecordPromises {
public:
    explicit RecordPromises(const AlarmContext& context) : m_context(context) {}

    void expectKept(const Dictionary& record) const;

private:
    void expectKeptByAlarms(const EventDict& record) const;
    void expectToCome(const Alarm& alarm, std::optional<Instant> issueTime,
                      ProximityAlarms asked) const;
    void expectToBeKeptInFiles(const Alarm& alarm) const;
    void expectKeptByDates(const Dictionary& record) const;

    AlarmContext m_context;
    TitleOrder m_titles{"en_US"};
};

} // namespace plenzo
