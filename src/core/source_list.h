#pragma once

#include "platform/user_defaults.h"
#include "propertylist/dictionary.h"

namespace plenzo {

/// The host's calendars: a tree of source-list nodes ("uid", "header", "children", "colInt"), in
/// which every calendar also has "visible", unless the settings leave it out, and "color".
class SourceList {
public:
    explicit SourceList(const UserDefaults& defaults) : m_defaults(defaults) {}

    /// Replaces the tree.
    void setSourceListFromNodes(const Array& nodes);
    [[nodiscard]] const Array& sourceListNodes() const { return m_sourceListNodes; }

private:
    const UserDefaults& m_defaults;
    Array m_sourceListNodes;
};

} // namespace plenzo
