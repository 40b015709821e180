#pragma once

#include "dates/instant.h"
#include "propertylist/dictionary.h"

#include <optional>
#include <string_view>

namespace plenzo {

/// Whether a newer record of an occurrence has no more use for an alarm that reached the user:
/// its reminder is gone from the record, or was acknowledged strictly after `since`, when the alarm
/// fired or was shown. A reminder without a "uid" is found in no record. A date of acknowledgement
/// without calendar fields is none.
[[nodiscard]] bool reminderIsCanceled(const Dictionary& eventDict,
                                      std::optional<std::string_view> reminderUID, Instant since);

} // namespace plenzo
