#include "core/preference_keys.h"

#include "support/bookmark_stores.h"

namespace plenzo {

void registerDefaults(UserDefaults& defaults) {
    defaults.registerDefaults(Dictionary{
        {Key(preferences::snoozeSeconds), Value(300)},
        {Key(preferences::snoozeDefault), Value(true)},
        {Key(preferences::takeFocus), Value(false)},
        {Key(preferences::showMenuIcon), Value(false)},
        {Key(preferences::issueAlarms), Value(false)},
        {Key(preferences::useNotificationCenter), Value(false)},
        {Key(preferences::hotKeyCode), Value(11)},
        {Key(preferences::hotKeyModifiers), Value(4352)},
        {Key(preferences::daysToShow), Value(3)},
        {Key(preferences::showDated), Value(true)},
        {Key(preferences::showUndated), Value(true)},
        {Key(preferences::showCompleted), Value(true)},
        {Key(preferences::omitCalendars), Value(Array())},
        {Key(preferences::sticky), Value(false)},
    });
}

Dictionary preferencesOfHost(Dictionary sent) {
    for (const char* key : BookmarkStores::keys) {
        sent.remove(key);
    }
    return sent;
}

} // namespace plenzo
