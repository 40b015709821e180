// Typed reading by key.

#include "propertylist/dictionary.h"

namespace plenzo {

bool Dictionary::boolForKey(KeyView key) const {
    const Value* value = find(key);
    return value != nullptr && value->boolValue();
}

std::int64_t Dictionary::integerForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->integerValue() : 0;
}

double Dictionary::doubleForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->doubleValue() : 0;
}

std::optional<std::string_view> Dictionary::stringForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->string() : std::nullopt;
}

std::optional<Date> Dictionary::dateForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->date() : std::nullopt;
}

std::optional<std::span<const std::byte>> Dictionary::dataForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->data() : std::nullopt;
}

const Array* Dictionary::arrayForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->array() : nullptr;
}

const Dictionary* Dictionary::dictionaryForKey(KeyView key) const {
    const Value* value = find(key);
    return value ? value->dictionary() : nullptr;
}

} // namespace plenzo
