#pragma once

#include "core/saved_state.h"
#include "core/test_agent.h"
#include "propertylist/binary_property_list.h"

#include <memory>
#include <string>
#include <vector>

namespace plenzo {

/// What a host has pushed.
struct Pushed {
    Array eventDicts;
    Array sourceNodes;
    Dictionary weather;
    /// Not pushed, but left of it.
    Array mailAlarms = {};
};

/// A desktop on which agents run one after the other, over the same files.
struct DesktopOfAgents : TestDesktop {
    using TestDesktop::TestDesktop;

    void launch() {
        agent = std::make_unique<PlenzoAlarm>(platform(), testIdentity());
        agent->prefsUpdated(Dictionary{{Key(preferences::issueAlarms), true},
                                       {Key(preferences::useNotificationCenter), true}});
        agent->applicationDidFinishLaunching();
        timers.fireDue();
    }
    void push(const Pushed& pushed) {
        agent->sourceListUpdated(pushed.sourceNodes);
        agent->weatherUpdated(pushed.weather);
        agent->alarmsUpdated(pushed.eventDicts, false);
    }
    /// Saves without an agent, as of now. Whether that worked.
    bool save(const Pushed& pushed) {
        std::vector<EventDict> eventDicts;
        for (const Value& eventDict : pushed.eventDicts) {
            eventDicts.push_back(std::make_shared<Dictionary>(*eventDict.dictionary()));
        }
        return SavedState(files, folder)
            .save({.eventDicts = eventDicts,
                   .sourceListNodes = pushed.sourceNodes,
                   .weather = pushed.weather,
                   .mailAlarms = pushed.mailAlarms,
                   .issueTime = clock.now()});
    }
    /// The agent ends without a word, and another one starts.
    void launchAgain() {
        agent.reset();
        launch();
    }

    [[nodiscard]] std::string pathOf(const std::string& name) const { return folder + "/" + name; }
    [[nodiscard]] Value saved(const std::string& name) const {
        const auto bytes = files.read(pathOf(name));
        return bytes ? readBinaryPropertyList(*bytes).value_or(Value("damaged")) : Value("missing");
    }
    /// In the order of the file system.
    [[nodiscard]] std::vector<std::string> fileNames() const {
        std::vector<std::string> names;
        for (const auto& [path, bytes] : files.contents) {
            names.push_back(path.substr(folder.size() + 1));
        }
        return names;
    }
    [[nodiscard]] std::vector<std::string> deliveredTitles() const {
        std::vector<std::string> titles;
        for (const UserNotification& notification : notifications.delivered) {
            titles.push_back(notification.title);
        }
        return titles;
    }
    [[nodiscard]] std::vector<std::string> pendingUIDs() const {
        return uidsOf(agent->inspector().pendingAlarms());
    }
    [[nodiscard]] static std::vector<std::string> uidsOf(const Array& dictionaries) {
        std::vector<std::string> uids;
        for (const Value& dictionary : dictionaries) {
            uids.emplace_back(dictionary.dictionary()->stringForKey(keys::uid).value_or("none"));
        }
        return uids;
    }

    const std::string folder = "/home/ana/.local/share/PlenzoAlarm";
    std::unique_ptr<PlenzoAlarm> agent;
};

/// A record with an alarm at its start.
inline Dictionary eventAt(const std::string& uid, Instant start) {
    return event(uid, start, {relativeReminder(uid + "-r", 0)});
}

/// The reminder nests so deep that no file can hold it.
inline Value nestedTooDeep() {
    Value value("deepest");
    for (int depth = 0; depth < 600; ++depth) {
        value = Value(Array{value});
    }
    return value;
}

} // namespace plenzo
