#include "core/source_list.h"

#include "core/preference_keys.h"
#include "model/event_dict.h"

#include <string_view>
#include <unordered_set>

namespace plenzo {

namespace {

using CalendarUIDs = std::unordered_set<std::string_view>;

CalendarUIDs stringsIn(const Array* array) {
    CalendarUIDs strings;
    if (array == nullptr) {
        return strings;
    }
    for (const Value& element : *array) {
        if (const auto string = element.string()) {
            strings.insert(*string);
        }
    }
    return strings;
}

Array withVisibilityAndColor(const Array& nodes, const CalendarUIDs& hidden);

Dictionary withVisibilityAndColor(Dictionary node, const CalendarUIDs& hidden) {
    if (const Array* children = node.arrayForKey(keys::children)) {
        node.set(keys::children, Value(withVisibilityAndColor(*children, hidden)));
        return node;
    }
    if (const auto uid = node.stringForKey(keys::uid)) {
        node.set(keys::visible, Value(!hidden.contains(*uid)));
    }
    if (node.contains(keys::colInt)) {
        const std::int64_t packed = node.integerForKey(keys::colInt);
        node.set(keys::color, Value(colorFromPackedInteger(packed)));
    }
    return node;
}

Array withVisibilityAndColor(const Array& nodes, const CalendarUIDs& hidden) {
    Array result;
    result.reserve(nodes.size());
    for (const Value& node : nodes) {
        if (const Dictionary* dictionary = node.dictionary()) {
            result.append(Value(withVisibilityAndColor(*dictionary, hidden)));
        }
    }
    return result;
}

} // namespace

void SourceList::setSourceListFromNodes(const Array& nodes) {
    const Value omitted = m_defaults.valueForKey(preferences::omitCalendars);
    m_sourceListNodes = withVisibilityAndColor(nodes, stringsIn(omitted.array()));
}

} // namespace plenzo
