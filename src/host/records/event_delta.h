#pragma once

#include "propertylist/array.h"

namespace plenzo {

/// What turns the one events into the others at the agent: a deletion notice for each "uid" that is
/// gone or has changed, then the records that are new or have changed, in their order. A "uid" that
/// has several records is the same only when all of them are.
Array eventDelta(const Array& before, const Array& after);

} // namespace plenzo
