#pragma once

#include "model/event_dict.h"

#include <string_view>
#include <unordered_set>
#include <vector>

namespace plenzo {

/// What a patch of the host does to occurrences, by their "uid". Points into the records.
class Delta {
public:
    explicit Delta(const std::vector<EventDict>& eventDicts);

    using UIDs = std::unordered_set<std::string_view>;
    /// Of the deletion notices: their records go, whether or not new ones come.
    [[nodiscard]] const UIDs& deleted() const { return m_deleted; }
    /// A deletion notice without a new record.
    [[nodiscard]] bool isTrueDeletion(const Dictionary& eventDict) const;
    /// A new record with a deletion notice for the old one.
    [[nodiscard]] bool isReplacement(const Dictionary& eventDict) const;

private:
    UIDs m_deleted;
    UIDs m_kept;
};

} // namespace plenzo
