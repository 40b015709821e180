#include "model/reminder.h"

#include "propertylist/known_keys.h"

namespace plenzo {

namespace {

std::optional<std::string> text(const Dictionary& dictionary, const Key& key) {
    const auto string = dictionary.stringForKey(key);
    return string ? std::optional(std::string(*string)) : std::nullopt;
}

} // namespace

Reminder reminderFromDictionary(const Dictionary& dictionary) {
    const auto absoluteTime = dictionary.dateForKey(keys::absoluteTime);
    const Array* recipients = dictionary.arrayForKey(keys::recipients);
    const Dictionary* xProps = dictionary.dictionaryForKey(keys::xProps);
    return {
        .reminderType = dictionary.integerForKey(keys::reminderType),
        .relativeSeconds = dictionary.doubleForKey(keys::relativeSeconds),
        .absoluteTime = absoluteTime ? std::optional(Instant(*absoluteTime)) : std::nullopt,
        .title = text(dictionary, keys::title),
        .note = text(dictionary, keys::note),
        .url = text(dictionary, keys::url),
        .recipients = recipients != nullptr ? std::optional(*recipients) : std::nullopt,
        .xProps = xProps != nullptr ? std::optional(*xProps) : std::nullopt,
    };
}

} // namespace plenzo
