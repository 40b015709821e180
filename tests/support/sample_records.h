#pragma once

#include "propertylist/dictionary.h"

#include <cstddef>

namespace plenzo {

/// A calendar event as a host sends it, of usual length: 14 entries, two of its reminders with 4
/// entries each. The same number gives the same record, another number another one.
Dictionary sampleRecord(std::size_t number);

/// The records with the numbers from 0 on.
Array sampleRecords(std::size_t count);

} // namespace plenzo
