#pragma once

#include "core/record_walk.h"
#include "propertylist/dictionary.h"

#include <span>
#include <string>
#include <vector>

namespace plenzo {

/// The window of the coming days' events and to-dos, as the core sees it.
class StatusWindowController {
public:
    StatusWindowController() = default;
    StatusWindowController(const StatusWindowController&) = delete;
    StatusWindowController& operator=(const StatusWindowController&) = delete;
    virtual ~StatusWindowController() = default;

    virtual void removeShownEventsWithUIDs(const std::vector<std::string>& uids) = 0;
    /// Takes the records in: all there are, or with `delta` those that changed, deletion notices
    /// included. Null ones are to be skipped.
    virtual void updateShownEventsWithEventDicts(std::span<const EventDict> eventDicts,
                                                 bool delta) = 0;
    virtual void processWeatherDict(const Dictionary& weather) = 0;
    /// Draws what has a pending alarm and what no longer has one.
    virtual void reloadIfVisible() = 0;
};

} // namespace plenzo
