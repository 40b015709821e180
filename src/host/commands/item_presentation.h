#pragma once

#include "host/commands/item_summary.h"

#include <string>

namespace plenzo {

/// Brings things to the user's eyes. Each is false when no program can. The token lets the program
/// take the focus; it may be empty.
class ItemPresentation {
public:
    ItemPresentation() = default;
    ItemPresentation(const ItemPresentation&) = delete;
    ItemPresentation& operator=(const ItemPresentation&) = delete;
    virtual ~ItemPresentation() = default;

    /// In the default program for calendar files.
    virtual bool openCalendarFile(const std::string& path, const std::string& token) = 0;

    /// In an editor.
    virtual bool openText(const std::string& path, const std::string& token) = 0;

    virtual bool showSummary(const ItemSummary& summary, const std::string& token) = 0;
};

} // namespace plenzo
