#pragma once

#include "host/commands/item_presentation.h"
#include "host/commands/user_messages.h"

#include <functional>
#include <string>

namespace plenzo {

/// Shows things with the default programs of the desktop. A summary is a page in the browser, or a
/// notification where there is none.
class DesktopPresentation final : public ItemPresentation {
public:
    /// Pages are written to the folder, which is made when it is not there.
    DesktopPresentation(std::string pageFolder, std::function<void(const Notice&)> notify)
        : m_pageFolder(std::move(pageFolder)), m_notify(std::move(notify)) {}

    bool openCalendarFile(const std::string& path, const std::string& token) override;
    bool openText(const std::string& path, const std::string& token) override;
    bool showSummary(const ItemSummary& summary, const std::string& token) override;

private:
    [[nodiscard]] std::string writePage(const ItemSummary& summary) const;

    std::string m_pageFolder;
    std::function<void(const Notice&)> m_notify;
};

/// plenzohost in the user's folder for what ends with the session, or else a temporary one.
std::string pageFolderOfUser();

} // namespace plenzo
